#pragma once

#include <string>
#include <string_view>

#include "core/result.h"

namespace bundle {

/// The text of a subtitle file in UTF-8 without a byte order mark, whatever it was written in.
///
/// Taken as they are: UTF-8, and UTF-16 by its byte order mark or by the arrows of its cues. Else
/// ICU's detector names the encodings and languages that the bytes may be in, and of these, and of
/// the usual encodings of each alphabet, the one wins whose letters belong to a language. Undecided
/// between two sets that give a text the same bytes, the Windows set comes first. NUL at the end is
/// left out. Fails for bytes that are no text.
Result<std::string> text_in_utf8(std::string_view bytes);

/// True for well-formed UTF-8 as RFC 3629 defines it, without NUL.
bool is_utf8_text(std::string_view text);

}  // namespace bundle
