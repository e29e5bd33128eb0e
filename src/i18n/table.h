#pragma once

/// Every text of the user interface in all nine languages, as one zero-terminated string of
/// 14,367 characters.
///
/// Format: 43 records separated by "§", each a list of cells separated by "|". The first record
/// names the languages, one cell each: native name, ":", English name. A language's position there
/// is its column. Every other record is a key followed by the nine texts in column order; a ":" in
/// these has no meaning.
///
/// A text may be empty, except the English one: the English text is shown in its place. Leading and
/// trailing blanks belong to the text. No text contains "§" or "|", and none equals a key.
///
/// The "buttonConvert" texts name the device as "iPhone" where another device's name may replace
/// it; the sentence has to stay right after that.
extern const wchar_t translation_table[];
