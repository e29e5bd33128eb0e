#pragma once

#include <string>
#include <string_view>

#include "core/result.h"

namespace bundle {

/// The text of a subtitle file in UTF-8 without a byte order mark, whatever encoding it is in.
///
/// UTF-8 is recognised by its form, UTF-16 by its byte order mark or the arrows of its cues. For
/// the rest, ICU's detector rates the encodings, and the one wins in which the letters best fit a
/// language that uses it; if an ISO and a Windows encoding are equal, the latter. NUL at the end is
/// left out. Fails for bytes that are not text.
Result<std::string> text_in_utf8(std::string_view bytes);

/// True for well-formed UTF-8 (RFC 3629) without NUL.
bool is_utf8_text(std::string_view text);

}  // namespace bundle
