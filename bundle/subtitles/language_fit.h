#pragma once

#include <unicode/unistr.h>

namespace bundle {

/// The share of the characters beyond ASCII, from 0 to 1, that do not belong in a text of the
/// language (an ICU locale name): letters of no word of it by CLDR's exemplar sets, capitals behind
/// small letters, letters of another alphabet beside ASCII ones, symbols and marks inside words,
/// controls. A letter of names and foreign words only counts as a part of one.
double foreign_share(const icu::UnicodeString& text, const char* language);

}  // namespace bundle
