#pragma once

#include <unicode/unistr.h>

#include <optional>
#include <string_view>

namespace bundle {

/// The bytes converted from an encoding, named as in ICU; invalid bytes become U+FFFD. Empty when
/// ICU does not know the encoding.
std::optional<icu::UnicodeString> decoded(std::string_view bytes, const char* encoding);

/// ICU's name of the most likely encoding of a text without a byte order mark and NUL; null when
/// none is likely.
const char* likely_encoding(std::string_view bytes);

}  // namespace bundle
