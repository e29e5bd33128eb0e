#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// How letters look.
struct LetterStyle {
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    std::uint32_t colour = 0xFFFFFF;  ///< 0xRRGGBB

    bool operator==(const LetterStyle&) const = default;
};

/// Text with marks that change the style of what follows. Such texts can be joined, because each
/// ends in the default style.
class StyledText {
  public:
    /// Adds UTF-8 text; control characters other than line feeds are left out.
    void add(std::string_view text, const LetterStyle& style);

    /// The text with its marks, without empty lines and blanks at the ends of lines; empty when
    /// nothing is visible.
    std::string marked() const;

  private:
    std::string text_;
    LetterStyle style_;
};

/// A run of letters in one style.
struct StyledRun {
    std::size_t first = 0;  ///< in characters
    std::size_t end = 0;    ///< as above, the first one after the run
    LetterStyle style;

    bool operator==(const StyledRun&) const = default;
};

/// A text without marks.
struct PlainText {
    std::string text;
    std::vector<StyledRun> runs;  ///< those that are not in the default style
};

/// Separates a marked text from its marks, up to `longest` bytes of text.
PlainText take_apart(std::string_view marked, std::size_t longest = SIZE_MAX);

}  // namespace bundle
