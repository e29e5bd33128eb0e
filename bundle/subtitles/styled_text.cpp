#include "subtitles/styled_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/formatted.h"

namespace bundle {

namespace {

// A mark: this character, a digit for bold, italic and underline, and six for the colour.
constexpr char kMark = '\x01';
constexpr std::size_t kMarkLength = 8;

std::string mark_of(const LetterStyle& style) {
    const int switches = (style.bold ? 1 : 0) | (style.italic ? 2 : 0) | (style.underlined ? 4 : 0);
    return formatted("%c%d%06X", kMark, switches, style.colour & 0xFFFFFFU);
}

LetterStyle style_of(std::string_view mark) {
    const int switches = mark[1] - '0';
    const std::string colour(mark.substr(2, 6));
    return {(switches & 1) != 0, (switches & 2) != 0, (switches & 4) != 0,
            static_cast<std::uint32_t>(std::stoul(colour, nullptr, 16))};
}

bool is_visible_or_break(char c) {
    return c == '\n' || static_cast<unsigned char>(c) >= 0x20;
}

bool begins_character(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

bool is_blank(char c) {
    return c == ' ' || c == '\n';
}

/// Bytes of the mark or the character at the start of the text.
std::size_t piece_length(std::string_view text) {
    if (text.front() == kMark) {
        return std::min(kMarkLength, text.size());
    }
    const auto* end = std::find_if(text.begin() + 1, text.end(), begins_character);
    return static_cast<std::size_t>(end - text.begin());
}

/// Joins pieces without superfluous blanks.
class Trimmer {
  public:
    Trimmer() = default;

    void add(std::string_view piece) {
        if (piece.front() == kMark) {
            (blanks_.empty() ? mark_before_ : mark_after_) = piece;
        } else if (is_blank(piece.front())) {
            has_break_ = has_break_ || piece.front() == '\n';
            blanks_ += piece;
        } else {
            const std::string gap = has_break_ ? "\n" : blanks_;
            result_ += mark_before_ + (is_empty_ ? "" : gap) + mark_after_;
            result_ += piece;
            *this = Trimmer(std::move(result_));
        }
    }

    std::string result() const { return is_empty_ ? "" : result_ + mark_before_ + mark_after_; }

  private:
    explicit Trimmer(std::string begun) : result_(std::move(begun)), is_empty_(false) {}

    std::string result_;
    bool is_empty_ = true;
    // What may come before the next character.
    std::string mark_before_;
    std::string blanks_;
    bool has_break_ = false;
    std::string mark_after_;
};

}  // namespace

void StyledText::add(std::string_view text, const LetterStyle& style) {
    if (style != style_) {
        text_ += mark_of(style);
        style_ = style;
    }
    std::copy_if(text.begin(), text.end(), std::back_inserter(text_), is_visible_or_break);
}

std::string StyledText::marked() const {
    const std::string whole = style_ == LetterStyle() ? text_ : text_ + mark_of({});
    Trimmer trimmer;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t length = piece_length(rest);
        trimmer.add(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return trimmer.result();
}

PlainText take_apart(std::string_view marked, std::size_t longest) {
    PlainText plain;
    LetterStyle style;
    std::size_t at = 0;
    while (!marked.empty()) {
        const std::size_t length = piece_length(marked);
        const std::string_view piece = marked.substr(0, length);
        marked.remove_prefix(length);
        if (piece.front() == kMark) {
            style = piece.size() == kMarkLength ? style_of(piece) : style;
            continue;
        }
        if (plain.text.size() + length > longest) {
            break;
        }
        plain.text += piece;
        if (style != LetterStyle()) {
            const bool goes_on = !plain.runs.empty() && plain.runs.back().end == at &&
                                 plain.runs.back().style == style;
            if (!goes_on) {
                plain.runs.push_back({at, at, style});
            }
            plain.runs.back().end = at + 1;
        }
        ++at;
    }
    return plain;
}

}  // namespace bundle
