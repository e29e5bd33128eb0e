#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

/// English name of the language of the system's texts, with its country if the system names one
/// ("French", "Portuguese (Brazil)"); empty if unknown. On Linux it is the language part of LC_ALL,
/// LC_MESSAGES or LANG, whether or not that locale is installed. As in gettext, the first entry of
/// LANGUAGE takes precedence over a locale that has a language.
wxString system_language_name();

/// The entry of `native` whose English name is the language of `systemName`, ignoring the country;
/// "English" if there is none. Both lists have the same order and length.
wxString default_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& systemName);
