#pragma once

#include <unicode/unistr.h>

namespace bundle {

/// The share of the characters beyond ASCII, from 0 to 1, that do not belong in a text of the
/// language (an ICU locale name): letters that CLDR's exemplar sets do not list, capitals after
/// small letters, letters of another alphabet beside ASCII ones, symbols and marks inside words,
/// controls. A letter that the language has only in names and foreign words counts in part.
double foreign_share(const icu::UnicodeString& text, const char* language);

}  // namespace bundle
