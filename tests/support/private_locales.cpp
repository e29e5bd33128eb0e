#include "support/private_locales.h"

#include <wx/utils.h>

#include <cstdlib>

#include "i18n/program_locale.h"

PrivateLocales::PrivateLocales() {
    for (const wxString name : {"LOCPATH", "LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) {
        wxGetEnv(name, &before[name]);
        wxUnsetEnv(name);
    }
    wxSetEnv("LOCPATH", folder.path());
}

PrivateLocales::~PrivateLocales() {
    for (const auto& [name, value] : before)
        environment(name, value);
    take_up_system_locale();
}

bool PrivateLocales::make(const wxString& name) const {
    const wxString command = "localedef -i " + name.BeforeFirst('.') + " -f " +
                             name.AfterFirst('.') + " \"" + folder.file(name) + "\"";
    return std::system(command.utf8_str()) == 0;
}

void PrivateLocales::environment(const wxString& variable, const wxString& value) {
    if (value.empty())
        wxUnsetEnv(variable);
    else
        wxSetEnv(variable, value);
}
