#include "subtitles/subrip.h"

#include <algorithm>
#include <optional>

namespace bundle {

namespace {

constexpr std::string_view kArrow = "-->";
constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kHour = 3600 * kSecond;
constexpr std::int64_t kLongestHours = 99'999;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Without blanks around it, byte order marks, which joined files have inside, and SUB, with which
/// old systems end a file.
std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    constexpr std::string_view kBlanks = " \t\x1A";
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    while (!text.empty()) {
        if (text.starts_with(kMark)) {
            text.remove_prefix(kMark.size());
        } else if (kBlanks.find(text.front()) != std::string_view::npos) {
            text.remove_prefix(1);
        } else {
            break;
        }
    }
    return text;
}

bool is_number(std::string_view line) {
    return !line.empty() && std::all_of(line.begin(), line.end(), is_digit);
}

/// Removes a number of up to `longest` digits from the start of `text`.
std::optional<std::int64_t> take_number(std::string_view& text, std::size_t longest) {
    std::int64_t value = 0;
    std::size_t length = 0;
    for (; length < std::min(longest, text.size()) && is_digit(text[length]); ++length) {
        value = value * 10 + (text[length] - '0');
    }
    text.remove_prefix(length);
    return length == 0 ? std::nullopt : std::optional(value);
}

bool take(std::string_view& text, std::string_view any_of) {
    if (text.empty() || any_of.find(text.front()) == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

void take_blanks(std::string_view& text) {
    while (take(text, " \t")) {
    }
}

/// Removes a decimal fraction of a second: "5" and "500" are half a second.
std::optional<std::int64_t> take_milliseconds(std::string_view& text) {
    const std::size_t before = text.size();
    auto value = take_number(text, 3);
    for (std::size_t digits = before - text.size(); value && digits < 3; ++digits) {
        *value *= 10;
    }
    return value;
}

/// Removes "HH:MM:SS,mmm".
std::optional<std::int64_t> take_time(std::string_view& text) {
    const auto hours = take_number(text, 5);
    const bool has_minutes = hours && take(text, ":");
    const auto minutes = has_minutes ? take_number(text, 2) : std::nullopt;
    const bool has_seconds = minutes && take(text, ":");
    const auto seconds = has_seconds ? take_number(text, 2) : std::nullopt;
    const bool has_fraction = seconds && take(text, ",.");
    const auto fraction = has_fraction ? take_milliseconds(text) : std::nullopt;
    if (!fraction || *hours > kLongestHours) {
        return std::nullopt;
    }
    return *hours * kHour + *minutes * 60 * kSecond + *seconds * kSecond + *fraction;
}

/// The cue, without text, that a timing line starts. Anything after the times, such as a position,
/// is ignored.
std::optional<Cue> cue_of(std::string_view line) {
    take_blanks(line);
    const auto start = take_time(line);
    take_blanks(line);
    if (!start || !line.starts_with(kArrow)) {
        return std::nullopt;
    }
    line.remove_prefix(kArrow.size());
    take_blanks(line);
    const auto end = take_time(line);
    return end ? std::optional(Cue{*start, *end, {}}) : std::nullopt;
}

/// Length of the line end that `text` starts with. Files that were converted twice have CR CR LF.
std::size_t end_length(std::string_view text) {
    return text.starts_with("\r\r\n") ? 3 : text.starts_with("\r\n") ? 2 : 1;
}

using Lines = std::vector<std::string_view>;

Lines trimmed_lines(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back(trimmed(text.substr(0, end)));
        text.remove_prefix(end);
        text.remove_prefix(text.empty() ? 0 : end_length(text));
    }
    return lines;
}

/// The number of empty lines after the line `at`.
std::size_t gap_below(const Lines& lines, std::size_t at) {
    std::size_t next = at + 1;
    while (next < lines.size() && lines[next].empty()) {
        ++next;
    }
    return next - at - 1;
}

/// The end of the text from `first` on, before the timing line at `times` and before its number. In
/// files with an empty line after every line, the number is as far above the times as the text is
/// below them.
std::size_t end_of_text(const Lines& lines, std::size_t first, std::size_t times) {
    std::size_t end = times;
    while (end > first && lines[end - 1].empty()) {
        --end;
    }
    if (end == first || !is_number(lines[end - 1])) {
        return end;
    }
    const std::size_t gap = times - end;
    const bool stands_alone = end - 1 > first && lines[end - 2].empty();
    return gap == 0 || (stands_alone && gap <= gap_below(lines, times)) ? end - 1 : end;
}

std::string joined(const Lines& lines, std::size_t first, std::size_t end) {
    std::string text;
    for (std::size_t at = first; at < end; ++at) {
        if (!lines[at].empty()) {
            text.append(text.empty() ? "" : "\n").append(lines[at]);
        }
    }
    return text;
}

}  // namespace

std::vector<Cue> read_subrip(std::string_view text) {
    const Lines lines = trimmed_lines(text);
    std::vector<Cue> cues;
    std::size_t first = 0;  // the line after the times of the last cue
    const auto finish = [&](std::size_t end) {
        if (!cues.empty()) {
            cues.back().text = joined(lines, first, end);
        }
        if (!cues.empty() && cues.back().text.empty()) {
            cues.pop_back();
        }
    };
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (const auto next = cue_of(lines[at])) {
            finish(end_of_text(lines, first, at));
            cues.push_back(*next);
            first = at + 1;
        }
    }
    finish(lines.size());
    return cues;
}

}  // namespace bundle
