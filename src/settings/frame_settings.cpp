// The frame's settings.

#include "app/Vantreo.h"
#include "settings/settings.h"

wxString Vantreo::config_read(const wxString& key) {
    return read_setting(*config, key, defaultLanguage);
}

void Vantreo::config_write(const wxString& key, const wxString& value) {
    write_setting(*config, key, value);
}
