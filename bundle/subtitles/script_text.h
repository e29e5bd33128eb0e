#pragma once

#include <string>
#include <string_view>

#include "core/result.h"

namespace bundle {

/// A text in UTF-8.
struct ReadableText {
    std::string text;
    int damaged_lines = 0;  ///< that are left out of it
};

/// The text of subtitles that were inside a movie, in UTF-8, whatever they were written in. Where
/// most of the lines beyond ASCII are UTF-8, the others are damaged and left out; else all of it is
/// in another encoding, as `text_in_utf8` finds it.
Result<ReadableText> readable_text(std::string_view bytes);

}  // namespace bundle
