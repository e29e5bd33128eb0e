#include "i18n/system_language.h"

#include <wx/intl.h>
#include <wx/utils.h>

#include <initializer_list>

#include "i18n/toolkit_language.h"

namespace {

/// "fr" for the locale identifier "fr_BE.UTF-8".
wxString language_code(const wxString& locale) {
    return locale.BeforeFirst('.').BeforeFirst('@').BeforeFirst('_');
}

/// Name of the language of a locale identifier; empty for an unknown one.
wxString language_of_locale(const wxString& locale) {
    const wxString code = language_code(locale);
    const wxLanguageInfo* info = code.empty() ? nullptr : wxLocale::FindLanguageInfo(code);
    return info == nullptr ? wxString() : info->Description;
}

wxString value_of(const char* variable) {
    wxString value;
    wxGetEnv(variable, &value);
    return value;
}

/// The value of the first of these variables that has one.
wxString first_value(std::initializer_list<const char*> variables) {
    for (const char* variable : variables) {
        if (const wxString value = value_of(variable); !value.empty())
            return value;
    }
    return wxEmptyString;
}

/// The first entry of LANGUAGE, or `locale` where that is empty; as gettext does, only where
/// `locale` has a language itself.
wxString wished_locale(const wxString& locale) {
    const UserEnvironment environment;
    const wxString first = value_of("LANGUAGE").BeforeFirst(':');
    const wxString code = language_code(locale);
    return first.empty() || code == "C" || code == "POSIX" ? locale : first;
}

}  // namespace

wxString system_language_name() {
#ifndef __APPLE__
    // The toolkit follows the character set's locale and knows only installed ones.
    const wxString locale = first_value({"LC_ALL", "LC_MESSAGES", "LANG"});
    if (!locale.empty())
        return language_of_locale(wished_locale(locale));
#endif
    const int language = wxLocale::GetSystemLanguage();
    return language == wxLANGUAGE_UNKNOWN ? wxString() : wxLocale::GetLanguageName(language);
}

wxString default_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& systemName) {
    const wxString language = systemName.BeforeFirst('(').BeforeFirst(',').Trim();
    wxString found;
    for (size_t i = 0; i < english.size(); ++i) {
        if (english[i] == language)
            found = native[i];
    }
    return found.empty() ? wxString("English") : found;
}
