// The frame's texts.

#include "app/Vantreo.h"
#include "i18n/lookup.h"
#include "i18n/table.h"

wxString Vantreo::Translate(const wxString& key, int fill) {
    const LanguageLists lists{languages, languagesEnglish};
    return lookup(
        translation_table, key, [this](const wxString& name) { return config_read(name); },
        fill == 1 ? &lists : nullptr);
}
