#include "settings/settings.h"

#include <wx/stdpaths.h>

namespace {

wxString default_of(const wxString& key, const wxString& defaultLanguage) {
    if (key == "Overwrite" || key == "HowToMove")
        return "true";
    if (key == "Output")
        return wxStandardPaths::Get().GetDocumentsDir();
    if (key == "Optimize")
        return "0";
    if (key == "Language")
        return defaultLanguage;
    return wxEmptyString;
}

}  // namespace

wxString read_setting(wxConfigBase& config, const wxString& key, const wxString& defaultLanguage) {
    wxString value = config.Read(key, wxEmptyString);
    if (value.empty()) {
        value = default_of(key, defaultLanguage);
        write_setting(config, key, value);
    }
    return key == "Shutdown" ? wxString("false") : value;
}

void write_setting(wxConfigBase& config, const wxString& key, const wxString& value) {
    config.Write(key, value);
    config.Flush(false);
}
