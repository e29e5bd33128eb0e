#include "subtitle_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <regex>

#include "files.h"

namespace bundle {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::int64_t kLargestFile = std::int64_t{16} << 20;

/// Bytes of the well-formed character at the start of `text`, 0 when there is none.
std::size_t character_length(std::string_view text) {
    const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        return lead == 0 ? 0 : 1;
    }
    const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 0 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    // The second byte also rules out overlong forms, surrogates and what lies beyond U+10FFFF.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest) {
        return 0;
    }
    for (std::size_t at = 2; at < length; ++at) {
        if ((byte(at) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    return length;
}

Result<std::string> read_file(const std::string& path) {
    if (auto failure = check_input(path)) {
        return *failure;
    }
    if (file_size(path) > kLargestFile) {
        return Failure{"the subtitle file is too large to be one"};
    }
    std::ifstream file(path, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(file), {});
    if (file.bad()) {
        return Failure{"cannot read the subtitle file"};
    }
    return content;
}

}  // namespace

Result<std::string> read_subtitles(const std::string& path) {
    auto content = read_file(path);
    if (!content) {
        return content;
    }
    if (content->starts_with(kByteOrderMark)) {
        content->erase(0, kByteOrderMark.size());
    }
    if (!is_utf8_text(*content)) {
        return Failure{"the subtitle file is not text in UTF-8"};
    }
    if (count_cues(*content) == 0) {
        return Failure{"the subtitle file holds no subtitles in SubRip form"};
    }
    return content;
}

bool is_utf8_text(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

int count_cues(std::string_view text) {
    static const std::regex timing(
        R"(\s*\d+:\d{1,2}:\d{1,2}[,.]\d{1,3}\s*-->\s*\d+:\d{1,2}:\d{1,2}[,.]\d{1,3}.*)");
    int cues = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, std::min<std::size_t>(end, 200));
        if (line.find("-->") != std::string_view::npos &&
            std::regex_match(line.begin(), line.end(), timing)) {
            ++cues;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return cues;
}

}  // namespace bundle
