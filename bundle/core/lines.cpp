#include "core/lines.h"

#include <algorithm>
#include <utility>

namespace bundle {

namespace {

constexpr std::size_t kLongestLine = 1000;

}  // namespace

std::string_view take_line(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

LineReader::LineReader(std::function<void(std::string_view)> on_line)
    : on_line_(std::move(on_line)) {}

void LineReader::add(std::string_view piece) {
    for (const char c : piece) {
        if (c == '\n') {
            on_line_(line_);
            line_.clear();
        } else if (line_.size() < kLongestLine) {
            line_ += c;
        }
    }
}

}  // namespace bundle
