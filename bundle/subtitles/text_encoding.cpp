#include "subtitles/text_encoding.h"

#include "subtitles/encoding_guess.h"

namespace bundle {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

std::string utf8_of(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

Result<std::string> recognised(std::string_view bytes) {
    const char* encoding = likely_encoding(bytes);
    const auto text = encoding == nullptr ? std::nullopt : decoded(bytes, encoding);
    if (!text) {
        return Failure{"its letters are in no encoding that is known here"};
    }
    return utf8_of(*text);
}

/// Without the NUL that some programs write at the end.
std::string_view without_terminator(std::string_view text) {
    return text.substr(0, text.find_last_not_of('\0') + 1);
}

Result<std::string> from_utf16(std::string_view bytes, const char* encoding) {
    constexpr std::size_t kUnit = 2;
    const auto text = decoded(bytes.substr(0, bytes.size() / kUnit * kUnit), encoding);
    const std::string all = text ? utf8_of(*text) : "";
    const std::string_view content = without_terminator(all);
    if (content.empty() || content.find('\0') != std::string_view::npos) {
        return Failure{"it is not text"};
    }
    return std::string(content);
}

/// The byte order of UTF-16 without a mark, by the position of the first cue's arrow.
const char* utf16_by_arrow(std::string_view bytes) {
    using namespace std::string_view_literals;
    const std::size_t at = bytes.find("-\0-\0>"sv);
    if (at == std::string_view::npos) {
        return nullptr;
    }
    return at % 2 == 0 ? "UTF-16LE" : "UTF-16BE";
}

/// Length of the well-formed character that `text` starts with, 0 if there is none.
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
    // The second byte also rules out overlong forms, surrogates and values beyond U+10FFFF.
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

}  // namespace

Result<std::string> text_in_utf8(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark)) {
        bytes.remove_prefix(kUtf8Mark.size());
    }
    const std::string_view content = without_terminator(bytes);
    if (is_utf8_text(content)) {
        return std::string(content);
    }
    if (bytes.starts_with(kUtf16LittleMark)) {
        return from_utf16(bytes.substr(kUtf16LittleMark.size()), "UTF-16LE");
    }
    if (bytes.starts_with(kUtf16BigMark)) {
        return from_utf16(bytes.substr(kUtf16BigMark.size()), "UTF-16BE");
    }
    if (const char* encoding = utf16_by_arrow(bytes)) {
        return from_utf16(bytes, encoding);
    }
    if (content.find('\0') != std::string_view::npos) {
        return Failure{"it is not text"};
    }
    return recognised(content);
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

}  // namespace bundle
