#include "i18n/toolkit_language.h"

#include <wx/intl.h>
#include <wx/utils.h>

#ifdef __linux__
#include <libintl.h>
#endif

namespace {

constexpr const char* kLanguage = "LANGUAGE";
constexpr const char* kFileNames = "G_FILENAME_ENCODING";

/// A variable's value, if it is set.
using Value = std::optional<wxString>;

Value value_of(const char* variable) {
    wxString value;
    return wxGetEnv(variable, &value) ? Value(value) : Value();
}

void set_value(const char* variable, const Value& value) {
    if (value == value_of(variable))
        return;
    if (value)
        wxSetEnv(variable, *value);
    else
        wxUnsetEnv(variable);
}

void set_language(const Value& value) {
    set_value(kLanguage, value);
#ifdef __linux__
    textdomain(textdomain(nullptr));  // makes gettext forget the texts that it has looked up
#endif
}

/// Read before the toolkit starts, which sets it.
const Value fileNamesAtStart = value_of(kFileNames);

/// The languages that the program was started with; empty until they are changed.
std::optional<Value>& languages_at_start() {
    static std::optional<Value> value;
    return value;
}

wxString code_of_language(const wxString& englishName) {
    const wxLanguageInfo* const info = wxLocale::FindLanguageInfo(englishName);
    return info == nullptr ? wxString("en") : info->CanonicalName.BeforeFirst('_');
}

}  // namespace

void set_toolkit_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& chosen) {
    if (!languages_at_start())
        languages_at_start() = value_of(kLanguage);
    const int index = native.Index(chosen);
    set_language(index == wxNOT_FOUND ? wxString("en")
                                      : code_of_language(english[static_cast<size_t>(index)]));
}

UserEnvironment::UserEnvironment()
    : language(value_of(kLanguage)), fileNames(value_of(kFileNames)) {
    if (languages_at_start())
        set_language(*languages_at_start());
    set_value(kFileNames, fileNamesAtStart);
}

UserEnvironment::~UserEnvironment() {
    set_language(language);
    set_value(kFileNames, fileNames);
}
