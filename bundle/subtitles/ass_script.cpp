#include "subtitles/ass_script.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "core/formatted.h"

namespace bundle {

namespace {

constexpr std::string_view kWordJoiner = "\xE2\x81\xA0";
constexpr std::size_t kLongestTag = 300;

/// The style that ffmpeg gives to text without one. Its size and face also end others, because
/// ffmpeg takes an empty size code for a size of 0.
constexpr std::string_view kHead =
    "[Script Info]\nScriptType: v4.00+\nPlayResX: 384\nPlayResY: 288\n\n[V4+ Styles]\n"
    "Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, BackColour, "
    "Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, "
    "Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\n"
    "Style: Default,Arial,16,&Hffffff,&Hffffff,&H0,&H0,0,0,0,0,100,100,0,0,1,1,0,2,10,10,10,1\n\n"
    "[Events]\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n";

/// Names of colours in subtitles, as 0xRRGGBB.
constexpr std::array<std::pair<std::string_view, std::uint32_t>, 16> kColours{{
    {"white", 0xFFFFFF},
    {"black", 0x000000},
    {"red", 0xFF0000},
    {"lime", 0x00FF00},
    {"green", 0x008000},
    {"blue", 0x0000FF},
    {"yellow", 0xFFFF00},
    {"cyan", 0x00FFFF},
    {"aqua", 0x00FFFF},
    {"magenta", 0xFF00FF},
    {"fuchsia", 0xFF00FF},
    {"gray", 0x808080},
    {"grey", 0x808080},
    {"silver", 0xC0C0C0},
    {"orange", 0xFFA500},
    {"purple", 0x800080},
}};

std::string in_small_letters(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

bool is_letter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

/// Length of the tag at the start of `text`, 0 if it is something else, such as "a < b" or "<3".
std::size_t tag_length(std::string_view text) {
    const std::size_t name = text.substr(1).starts_with('/') ? 2 : 1;
    if (name >= text.size() || !is_letter(text[name])) {
        return 0;
    }
    const std::size_t end = text.find_first_of("<>", name);
    const bool is_closed = end != std::string_view::npos && text[end] == '>';
    return is_closed && end < kLongestTag ? end + 1 : 0;
}

/// Length of the override code at the start of `text`, such as "{\an8}", 0 if it is something else.
std::size_t code_length(std::string_view text) {
    const std::size_t end = text.find('}');
    const bool is_code = text.starts_with("{\\") && end != std::string_view::npos;
    return is_code && end < kLongestTag ? end + 1 : 0;
}

/// The value of a tag's attribute, without quotes; empty if there is none.
std::string attribute(std::string_view tag, std::string_view name) {
    const std::string small = in_small_letters(tag);
    const std::size_t at = small.find(std::string(" ").append(name).append("="));
    if (at == std::string::npos) {
        return {};
    }
    std::string_view value = tag.substr(at + name.size() + 2);
    const bool is_quoted = value.starts_with('"') || value.starts_with('\'');
    const std::string ends = is_quoted ? std::string(1, value.front()) : " />";
    value.remove_prefix(is_quoted ? 1 : 0);
    return std::string(value.substr(0, std::min(value.find_first_of(ends), value.size())));
}

std::optional<std::uint32_t> colour_of(const std::string& text) {
    const std::string digits = text.starts_with('#') ? text.substr(1) : text;
    if (digits.size() == 6 &&
        digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos) {
        return static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
    }
    const std::string name = in_small_letters(text);
    for (const auto& [known, colour] : kColours) {
        if (known == name) {
            return colour;
        }
    }
    return std::nullopt;
}

/// "{\1c&HBBGGRR&}".
std::string colour_code(std::uint32_t colour) {
    return formatted("{\\1c&H%02X%02X%02X&}", colour & 0xFFU, (colour >> 8) & 0xFFU,
                     (colour >> 16) & 0xFFU);
}

bool is_size(const std::string& text) {
    return !text.empty() && text.size() <= 3 &&
           text.find_first_not_of("0123456789") == std::string::npos;
}

bool is_face(const std::string& text) {
    return !text.empty() && text.find_first_of("\\{}&,\n") == std::string::npos;
}

/// What a <font> changes.
std::string font_codes(std::string_view tag) {
    std::string codes;
    if (const auto colour = colour_of(attribute(tag, "color"))) {
        codes += colour_code(*colour);
    }
    if (const std::string size = attribute(tag, "size"); is_size(size)) {
        codes += "{\\fs" + size + "}";
    }
    if (const std::string face = attribute(tag, "face"); is_face(face)) {
        codes += "{\\fn" + face + "}";
    }
    return codes;
}

class Translator {
  public:
    std::string translate(std::string_view text) {
        while (!text.empty()) {
            text.remove_prefix(take(text));
        }
        return std::move(result_);
    }

  private:
    /// Translates what `text` starts with and returns its length in bytes.
    std::size_t take(std::string_view text) {
        if (const std::size_t length = text.front() == '<' ? tag_length(text) : 0) {
            tag(text.substr(0, length));
            return length;
        }
        if (const std::size_t length = code_length(text)) {
            return length;
        }
        character(text.front(), text.size() > 1 ? text[1] : ' ');
        return 1;
    }

    void character(char c, char next) {
        if (c == '\n') {
            end_line();
            return;
        }
        line_has_text_ = true;
        result_ += c;
        if ((c == '\\' && (next == 'N' || next == 'n' || next == 'h')) ||
            (c == '{' && next == '\\')) {
            result_ += kWordJoiner;
        }
    }

    void tag(std::string_view tag) {
        const std::string name = in_small_letters(tag.substr(0, tag.find_first_of(" \n/>", 2)));
        if (name == "<br") {
            end_line();
        } else if (name == "<i" || name == "<b" || name == "<u") {
            open(name.substr(1), "{\\" + name.substr(1) + "1}");
        } else if (name == "<font") {
            open("font", font_codes(tag));
        } else if (name.starts_with("</")) {
            close(name.substr(2));
        }
    }

    /// Leaves out empty lines, which would only push the others up.
    void end_line() {
        result_ += line_has_text_ ? "\\N" : "";
        line_has_text_ = false;
    }

    void open(const std::string& name, const std::string& codes) {
        end_styles();
        elements_.emplace_back(name, codes);
        begin_styles();
    }

    void close(const std::string& name) {
        const auto element = std::find_if(elements_.rbegin(), elements_.rend(),
                                          [&name](const auto& open) { return open.first == name; });
        if (element == elements_.rend()) {
            return;
        }
        end_styles();
        elements_.erase(std::next(element).base());
        begin_styles();
    }

    /// Ends the styles of all open elements: ffmpeg's encoder drops a style when another begins
    /// within it.
    void end_styles() {
        constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kEnds{
            {{"\\b1", "{\\b0}"},
             {"\\i1", "{\\i0}"},
             {"\\u1", "{\\u0}"},
             {"\\1c", "{\\1c}"},
             {"\\fs", "{\\fs16}"},
             {"\\fn", "{\\fnArial}"}}};
        for (const auto& end : kEnds) {
            const auto has_begun = [&end](const auto& element) {
                return element.second.find(end.first) != std::string::npos;
            };
            if (std::any_of(elements_.begin(), elements_.end(), has_begun)) {
                result_ += end.second;
            }
        }
    }

    void begin_styles() {
        for (const auto& [name, codes] : elements_) {
            result_ += codes;
        }
    }

    std::string result_;
    bool line_has_text_ = false;
    std::vector<std::pair<std::string, std::string>> elements_;  ///< the open ones: name and codes
};

/// "H:MM:SS.cc".
std::string ass_time(std::int64_t milliseconds) {
    const long long hundredths = (milliseconds + 5) / 10;
    return formatted("%lld:%02lld:%02lld.%02lld", hundredths / 360'000, hundredths / 6'000 % 60,
                     hundredths / 100 % 60, hundredths % 100);
}

}  // namespace

std::string ass_text(std::string_view text) {
    return Translator().translate(text);
}

std::string ass_script(const std::vector<Cue>& cues) {
    std::string script(kHead);
    for (const Cue& cue : cues) {
        script += "Dialogue: 0," + ass_time(cue.start_ms) + "," + ass_time(cue.end_ms) +
                  ",Default,,0,0,0,," + ass_text(cue.text) + "\n";
    }
    return script;
}

}  // namespace bundle
