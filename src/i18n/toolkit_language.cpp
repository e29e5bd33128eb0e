#include "i18n/toolkit_language.h"

#include <wx/intl.h>
#include <wx/utils.h>

#ifdef __linux__
#include <libintl.h>
#endif

namespace {

constexpr const char* kVariable = "LANGUAGE";

/// The variable's value, if it is set.
using Value = std::optional<wxString>;

Value current_value() {
    wxString value;
    return wxGetEnv(kVariable, &value) ? Value(value) : Value();
}

void set_value(const Value& value) {
    if (value)
        wxSetEnv(kVariable, *value);
    else
        wxUnsetEnv(kVariable);
#ifdef __linux__
    textdomain(textdomain(nullptr));  // makes gettext forget the texts that it has looked up
#endif
}

/// What the program was started with; empty until the variable is changed.
std::optional<Value>& value_at_start() {
    static std::optional<Value> value;
    return value;
}

wxString language_code(const wxString& englishName) {
    const wxLanguageInfo* const info = wxLocale::FindLanguageInfo(englishName);
    return info == nullptr ? wxString("en") : info->CanonicalName.BeforeFirst('_');
}

}  // namespace

void set_toolkit_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& chosen) {
    if (!value_at_start())
        value_at_start() = current_value();
    const int index = native.Index(chosen);
    set_value(index == wxNOT_FOUND ? wxString("en")
                                   : language_code(english[static_cast<size_t>(index)]));
}

UserLanguages::UserLanguages() : before(current_value()) {
    if (value_at_start())
        set_value(*value_at_start());
}

UserLanguages::~UserLanguages() {
    set_value(before);
}
