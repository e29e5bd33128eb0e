#include "subrip.h"

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

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

bool is_number(std::string_view line) {
    line = trimmed(line);
    return !line.empty() && std::all_of(line.begin(), line.end(), is_digit);
}

/// Takes one to `longest` digits from the start of `text`.
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

/// Takes a decimal fraction of a second: "5" and "500" are half of one.
std::optional<std::int64_t> take_milliseconds(std::string_view& text) {
    const std::size_t before = text.size();
    auto value = take_number(text, 3);
    for (std::size_t digits = before - text.size(); value && digits < 3; ++digits) {
        *value *= 10;
    }
    return value;
}

/// Takes "HH:MM:SS,mmm".
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

/// The cue without text that a timing line opens. What follows the times, as places on the screen,
/// is passed over.
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

std::string_view take_line(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    const bool is_pair = text.substr(end).starts_with("\r\n");
    text.remove_prefix(std::min(end + (is_pair ? 2 : 1), text.size()));
    return line;
}

/// Gathers the lines of one cue after the other.
class Reader {
  public:
    void add(std::string_view line) {
        if (const auto next = cue_of(line)) {
            drop_number();
            finish();
            cue_ = next;
        } else if (cue_) {
            lines_.push_back(line);
        }
    }

    std::vector<Cue> finished() {
        finish();
        return std::move(cues_);
    }

  private:
    /// The number of the cue that begins stands in the line above its times.
    void drop_number() {
        if (!lines_.empty() && is_number(lines_.back())) {
            lines_.pop_back();
        }
    }

    void finish() {
        for (const std::string_view line : lines_) {
            if (const std::string_view text = trimmed(line); !text.empty()) {
                cue_->text.append(cue_->text.empty() ? "" : "\n").append(text);
            }
        }
        if (cue_ && !cue_->text.empty()) {
            cues_.push_back(*cue_);
        }
        lines_.clear();
        cue_.reset();
    }

    std::vector<Cue> cues_;
    std::optional<Cue> cue_;
    std::vector<std::string_view> lines_;
};

}  // namespace

std::vector<Cue> read_subrip(std::string_view text) {
    Reader reader;
    while (!text.empty()) {
        reader.add(take_line(text));
    }
    return reader.finished();
}

}  // namespace bundle
