#include "core/console.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>

#include "protocol/tool_output.h"

namespace bundle {

namespace {

constexpr std::size_t kAtomicWrite = 4096;  // a pipe that takes output takes as much
constexpr std::size_t kLongestName = 120;
constexpr int kPatienceMs = 1000;

bool takes_output(int descriptor, int timeout_ms) {
    pollfd waiting{descriptor, POLLOUT, 0};
    return ::poll(&waiting, 1, timeout_ms) == 1 && (waiting.revents & POLLOUT) != 0;
}

void write_within(int descriptor, std::string_view text, int timeout_ms) {
    while (!text.empty() && takes_output(descriptor, timeout_ms)) {
        const std::size_t piece = std::min(text.size(), kAtomicWrite);
        const ssize_t written = ::write(descriptor, text.data(), piece);
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void break_up(std::string& text, std::string_view words) {
    for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at)) {
        text[at + words.size() - 1] = '?';
    }
}

bool is_continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

bool is_control(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\n') || byte == 0x7F;
}

}  // namespace

void write_if_ready(int descriptor, std::string_view text) {
    write_within(descriptor, text, 0);
}

void write_patiently(int descriptor, std::string_view text) {
    write_within(descriptor, text, kPatienceMs);
}

void complain(std::string_view tool, std::string_view message) {
    const std::string prefix = tool_output::complaint_prefix(tool);
    std::string lines = prefix;
    for (const char c : printable(message)) {
        lines += c;
        lines += c == '\n' ? prefix : "";
    }
    write_patiently(STDERR_FILENO, lines + "\n");
}

std::string printable(std::string_view text) {
    std::string result(text);
    std::replace_if(result.begin(), result.end(), is_control, '?');
    for (const std::string_view words : tool_output::kReserved) {
        break_up(result, words);
    }
    return result;
}

std::string in_quotes(std::string_view name) {
    std::string text(name);
    if (text.size() > kLongestName) {
        std::size_t first = kLongestName / 2;
        std::size_t last = text.size() - kLongestName / 2;
        while (first > 0 && is_continuation(text[first])) {
            --first;
        }
        while (last < text.size() && is_continuation(text[last])) {
            ++last;
        }
        text.replace(first, last - first, "...");
    }
    return whole_in_quotes(text);
}

std::string whole_in_quotes(std::string_view path) {
    std::string text = printable(path);
    std::replace(text.begin(), text.end(), '\n', '?');
    return "'" + text + "'";
}

void MessageTail::add(std::string_view text) {
    kept_.append(text);
    if (kept_.size() > kLimit) {
        kept_.erase(0, kept_.size() - kLimit);
        cut_ = true;
    }
}

std::string MessageTail::text() const {
    std::string_view view = kept_;
    if (cut_) {
        const std::size_t line_end = view.find('\n');
        view.remove_prefix(line_end == std::string_view::npos ? 0 : line_end + 1);
    }
    while (!view.empty() && view.back() == '\n') {
        view.remove_suffix(1);
    }
    return printable(view);
}

}  // namespace bundle
