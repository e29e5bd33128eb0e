#include "i18n/lookup.h"

#include <wx/crt.h>
#include <wx/tokenzr.h>

#include "convert/devices.h"

namespace {

constexpr const wchar_t* kRecordEnd = L"\u00a7";

/// Walks the header record: appends its names to `fill` and returns the column of the language
/// that the setting names, 0 (English) when it names none.
int read_header(const wxString& header, const SettingReader& setting, const LanguageLists* fill) {
    int selected = 0;
    int index = 0;
    wxStringTokenizer cells(header, "|");
    for (; cells.HasMoreTokens(); ++index) {
        wxStringTokenizer names(cells.GetNextToken(), ":");
        const wxString native = names.GetNextToken();
        const wxString english = names.GetNextToken();
        if (setting("Language") == native)
            selected = index;
        if (fill != nullptr) {
            fill->native.Add(native);
            fill->english.Add(english);
        }
    }
    return selected;
}

/// Puts the chosen device's name into the Convert caption. A text that spells the device
/// differently stays as it is.
void name_device(wxString& text, const SettingReader& setting) {
    const std::size_t device = known_device(wxAtoi(setting("Optimize")));
    text.Replace(kDevices[0].caption, kDevices[device].caption);
}

/// The text in column `selected` of the cells that follow a key, the English one if it is empty.
wxString pick_column(wxStringTokenizer& cells, const wxString& key, int selected,
                     const SettingReader& setting) {
    wxString text;
    wxString english;
    for (int column = 0; column <= selected; ++column) {
        if (column == 1)
            english = text;
        text = cells.GetNextToken();
        if (key == "buttonConvert")
            name_device(text, setting);
    }
    return text.empty() ? english : text;
}

}  // namespace

wxString lookup(const wxString& table, const wxString& key, const SettingReader& setting,
                const LanguageLists* fill) {
    wxStringTokenizer records(table, kRecordEnd);
    const int selected = read_header(records.GetNextToken(), setting, fill);
    while (records.HasMoreTokens()) {
        wxStringTokenizer cells(records.GetNextToken(), "|");
        while (cells.HasMoreTokens()) {
            if (cells.GetNextToken() == key)
                return pick_column(cells, key, selected, setting);
        }
    }
    return wxEmptyString;
}
