#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <functional>

/// Reads one setting by its key.
using SettingReader = std::function<wxString(const wxString& key)>;

/// The lists that the header record of a translation table fills: native and English names.
struct LanguageLists {
    wxArrayString& native;
    wxArrayString& english;
};

/// Looks `key` up in `table` (its format: i18n/table.h) in the language that `setting("Language")`
/// names natively. An empty cell gives the English text, an unknown language English, an unknown
/// key "". The text of `buttonConvert` names the device of `setting("Optimize")`. Nothing is kept
/// between calls. `fill`, when given, has the header's names appended.
wxString lookup(const wxString& table, const wxString& key, const SettingReader& setting,
                const LanguageLists* fill = nullptr);
