#include "tools/complaints.h"

#include <algorithm>

#include "protocol/tool_output.h"

namespace {

constexpr std::size_t kLongestLine = 8192;

bool is_complaint(std::string_view line) {
    return line.starts_with(tool_output::complaint_prefix(tool_output::kFFmpeg)) ||
           line.starts_with(tool_output::complaint_prefix(tool_output::kMP4Box));
}

}  // namespace

std::string Complaints::in(std::string_view bytes) {
    std::string found;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        line.append(bytes.substr(0, std::min(end, kLongestLine - line.size())));
        if (end == bytes.size())
            break;
        if (is_complaint(line))
            found.append(line).append("\n");
        line.clear();
        bytes.remove_prefix(end + 1);
    }
    return found;
}
