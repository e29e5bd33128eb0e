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

/// Text in which marks change the style of what follows. Such texts can be joined: a text ends in
/// the usual style.
class StyledText {
  public:
    /// Characters in UTF-8; controls but line feeds are left out.
    void add(std::string_view text, const LetterStyle& style);

    /// The text with its marks, without empty lines and blanks at the ends of lines; empty when
    /// there is nothing to see.
    std::string marked() const;

  private:
    std::string text_;
    LetterStyle style_;
};

/// Letters of one style.
struct StyledRun {
    std::size_t first = 0;   ///< counted in characters
    std::size_t behind = 0;  ///< as above: the first one that is not a part of it
    LetterStyle style;

    bool operator==(const StyledRun&) const = default;
};

/// A text taken apart.
struct PlainText {
    std::string text;
    std::vector<StyledRun> runs;  ///< those that are not in the usual style
};

/// Takes a marked text apart, up to so many bytes of what is to be seen.
PlainText take_apart(std::string_view marked, std::size_t longest = SIZE_MAX);

}  // namespace bundle
