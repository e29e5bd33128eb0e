#include "i18n/system_language.h"

#include <wx/intl.h>
#include <wx/utils.h>

namespace {

/// Name of the language of a locale identifier such as "fr_BE.UTF-8"; empty for an unknown one.
wxString language_of_locale(const wxString& locale) {
    const wxString code = locale.BeforeFirst('.').BeforeFirst('@').BeforeFirst('_');
    const wxLanguageInfo* info = code.empty() ? nullptr : wxLocale::FindLanguageInfo(code);
    return info == nullptr ? wxString() : info->Description;
}

}  // namespace

wxString system_language_name() {
#ifndef __APPLE__
    // The toolkit follows the character set's locale and knows only installed ones.
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        wxString locale;
        if (wxGetEnv(variable, &locale) && !locale.empty())
            return language_of_locale(locale);
    }
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
