#pragma once

#include <string>
#include <string_view>

#include "core/result.h"

namespace bundle {

/// A text in UTF-8.
struct ReadableText {
    std::string text;
    int damaged_lines = 0;  ///< not in the text
};

/// The text of subtitles inside a movie, in UTF-8. Where most of the lines that are not ASCII are
/// UTF-8, the others are damaged and left out; else all of it is in another encoding, which
/// `text_in_utf8` finds.
Result<ReadableText> readable_text(std::string_view bytes);

}  // namespace bundle
