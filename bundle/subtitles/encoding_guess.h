#pragma once

#include <unicode/unistr.h>

#include <optional>
#include <string_view>

namespace bundle {

/// The bytes read in an encoding by ICU's name of it; what stands for nothing becomes U+FFFD. Empty
/// when ICU does not know the encoding.
std::optional<icu::UnicodeString> decoded(std::string_view bytes, const char* encoding);

/// ICU's name of the encoding that a text without marks and without NUL is most likely in; null
/// when none is likely.
const char* likely_encoding(std::string_view bytes);

}  // namespace bundle
