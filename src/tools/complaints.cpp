#include "tools/complaints.h"

#include <algorithm>

namespace {

constexpr std::size_t kLongestLine = 8192;

bool is_complaint(std::string_view line) {
    constexpr std::string_view kFFmpeg = "ffmpeg: ";
    constexpr std::string_view kMP4Box = "MP4Box: ";
    return line.substr(0, kFFmpeg.size()) == kFFmpeg || line.substr(0, kMP4Box.size()) == kMP4Box;
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
