#include "subtitles/ass_reading.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>

#include "core/lines.h"
#include "core/numbers.h"
#include "subtitles/styled_text.h"

namespace bundle {

namespace {

using Styles = std::map<std::string, LetterStyle, std::less<>>;

constexpr std::size_t kFieldsBeforeText = 9;
constexpr std::string_view kWordJoiner = "\xE2\x81\xA0";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t\r"), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(" \t\r") + 1);
}

/// Removes the text up to the next comma, or all, and returns it.
std::string_view take_field(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    const std::string_view field = trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

/// The colour "&HAABBGGRR&", or the same number in decimal; white for a dark one.
std::uint32_t colour_of(std::string_view text) {
    const bool is_hex = text.starts_with("&H") || text.starts_with("&h");
    const std::string digits(text.substr(is_hex ? 2 : 0));
    const auto bgr =
        static_cast<std::uint32_t>(std::strtoll(digits.c_str(), nullptr, is_hex ? 16 : 10));
    const std::uint32_t red = bgr & 0xFF;
    const std::uint32_t green = (bgr >> 8) & 0xFF;
    const std::uint32_t blue = (bgr >> 16) & 0xFF;
    constexpr std::uint32_t kDarkest = 70;  // of 255, weighted as luma
    const bool is_dark = (red * 30 + green * 59 + blue * 11) / 100 < kDarkest;
    return is_dark ? 0xFFFFFF : red << 16 | green << 8 | blue;
}

bool is_on(std::string_view value) {
    return !value.empty() && value != "0";
}

/// Reads the styles of a script, line by line.
class StyleReader {
  public:
    void format(std::string_view fields) {
        columns_.clear();
        while (!fields.empty()) {
            columns_.emplace_back(take_field(fields));
        }
    }

    void style(std::string_view fields) {
        std::string name;
        LetterStyle style;
        for (const std::string& column : columns_) {
            const std::string_view value = take_field(fields);
            if (column == "Name") {
                name = value.substr(std::min(value.find_first_not_of('*'), value.size()));
            } else if (column == "PrimaryColour") {
                style.colour = colour_of(value);
            } else if (column == "Bold") {
                style.bold = is_on(value);
            } else if (column == "Italic") {
                style.italic = is_on(value);
            } else if (column == "Underline") {
                style.underlined = is_on(value);
            }
        }
        styles_[name] = style;
    }

    const Styles& styles() const { return styles_; }

  private:
    std::vector<std::string> columns_;
    Styles styles_;
};

LetterStyle find(const Styles& styles, std::string_view name) {
    const auto found = styles.find(name);
    return found == styles.end() ? LetterStyle() : found->second;
}

/// Reads the text of a cue.
class TextReader {
  public:
    TextReader(const Styles& styles, std::string_view style, bool has_comments)
        : styles_(styles), first_(find(styles, style)), now_(first_), has_comments_(has_comments) {}

    std::string read(std::string_view text) {
        while (!text.empty()) {
            text.remove_prefix(take(text));
        }
        return result_.marked();
    }

  private:
    /// Reads what the text starts with and returns its length in bytes.
    std::size_t take(std::string_view text) {
        if (text.front() == '{') {
            const std::size_t end = text.find('}');
            const std::string_view inside = text.substr(1, end == text.npos ? 0 : end - 1);
            const bool is_code = inside.find('\\') != inside.npos;
            if (end != text.npos && (is_code || has_comments_)) {
                codes(inside);
                return end + 1;
            }
        }
        if (text.front() == '\\' && text.size() > 1) {
            return escape(text);
        }
        const std::size_t length = std::min(text.find_first_of("{\\", 1), text.size());
        show(text.substr(0, length));
        return length;
    }

    std::size_t escape(std::string_view text) {
        switch (text[1]) {
            case 'N':
            case 'n':
                show("\n");
                return 2;
            case 'h':
                show(" ");
                return 2;
            case '{':
            case '}':
                show(text.substr(1, 1));
                return 2;
            default:
                show("\\");
                return text.substr(1).starts_with(kWordJoiner) ? 1 + kWordJoiner.size() : 1;
        }
    }

    void show(std::string_view text) {
        if (!draws_) {
            result_.add(text, now_);
        }
    }

    void codes(std::string_view inside) {
        while (!inside.empty()) {
            const std::size_t start = std::min(inside.find('\\'), inside.size());
            inside.remove_prefix(std::min(start + 1, inside.size()));
            const std::size_t end = std::min(inside.find('\\'), inside.size());
            code(trimmed(inside.substr(0, end)));
            inside.remove_prefix(end);
        }
    }

    void code(std::string_view code) {
        if (code.starts_with('r')) {
            now_ = code.size() > 1 ? find(styles_, code.substr(1)) : first_;
        } else if (code.starts_with("c&") || code.starts_with("1c&")) {
            now_.colour = colour_of(code.substr(code.find('&')));
        } else if (code == "c" || code == "1c") {
            now_.colour = first_.colour;
        } else if (!switched(code, 'b', now_.bold, first_.bold) &&
                   !switched(code, 'i', now_.italic, first_.italic) &&
                   !switched(code, 'u', now_.underlined, first_.underlined)) {
            switched(code, 'p', draws_, false);
        }
    }

    /// Reads a letter with a number; without one, the value goes back to `at_first`.
    static bool switched(std::string_view code, char letter, bool& now, bool at_first) {
        if (!code.starts_with(letter)) {
            return false;
        }
        const auto number = parse_integer(code.substr(1));
        if (!number && code.size() > 1) {
            return false;
        }
        constexpr std::int64_t kNormalWeight = 400;
        now = number ? *number == 1 || *number > kNormalWeight || (letter == 'p' && *number > 0)
                     : at_first;
        return true;
    }

    const Styles& styles_;
    LetterStyle first_;
    LetterStyle now_;
    bool has_comments_;
    bool draws_ = false;
    StyledText result_;
};

/// "H:MM:SS.cc" in milliseconds. In times before the start of the movie, each part has a minus.
std::optional<std::int64_t> time_of(std::string_view text) {
    constexpr std::array<std::int64_t, 4> kUnits{3'600'000, 60'000, 1000, 10};
    std::int64_t time = 0;
    for (const std::int64_t unit : kUnits) {
        const std::size_t end = std::min(text.find_first_of(":."), text.size());
        const auto part = parse_integer(text.substr(0, end));
        if (!part) {
            return std::nullopt;
        }
        time += *part * unit;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return time;
}

std::optional<Cue> cue_of(std::string_view fields, const Styles& styles, bool has_comments) {
    std::array<std::string_view, kFieldsBeforeText> head;
    for (std::string_view& field : head) {
        field = take_field(fields);
    }
    const auto start = time_of(head[1]);
    const auto end = time_of(head[2]);
    const std::string text = TextReader(styles, head[3], has_comments).read(fields);
    return start && end && !text.empty() ? std::optional(Cue{*start, *end, text}) : std::nullopt;
}

bool take_word(std::string_view& line, std::string_view word) {
    if (!line.starts_with(word)) {
        return false;
    }
    line.remove_prefix(word.size());
    return true;
}

}  // namespace

std::vector<Cue> read_ass(std::string_view script, bool has_comments) {
    std::vector<Cue> cues;
    std::set<std::tuple<std::int64_t, std::int64_t, std::string>> known;
    StyleReader styles;
    bool in_events = false;
    while (!script.empty()) {
        std::string_view line = trimmed(take_line(script));
        in_events = in_events || line == "[Events]";
        if (!in_events && take_word(line, "Format:")) {
            styles.format(line);
        } else if (!in_events && take_word(line, "Style:")) {
            styles.style(line);
        } else if (take_word(line, "Dialogue:")) {
            const auto cue = cue_of(line, styles.styles(), has_comments);
            if (cue && known.emplace(cue->start_ms, cue->end_ms, cue->text).second) {
                cues.push_back(*cue);
            }
        }
    }
    return cues;
}

}  // namespace bundle
