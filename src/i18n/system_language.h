#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

/// English name of the language of the system's texts, with its country where the system tells one
/// ("French", "Portuguese (Brazil)"); empty when nothing is known. On Linux it is the language part
/// of LC_ALL, LC_MESSAGES or LANG, whether or not that locale is installed, or rather the first
/// entry of LANGUAGE, which gettext lets take precedence over a locale that has a language.
wxString system_language_name();

/// The entry of `native` whose English name is the language of `systemName`, whatever its country;
/// "English" when there is none. Both lists have the same order and length.
wxString default_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& systemName);
