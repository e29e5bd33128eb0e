#include "settings/settings_file.h"

#include <wx/convauto.h>
#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/log.h>
#include <wx/sstream.h>
#include <wx/tokenzr.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include "app/utf8.h"

namespace {

/// Far more than the program ever writes; every change writes the whole file.
constexpr wxFileOffset kLargestFile = wxFileOffset{1} << 20;

/// What is left of a settings file.
struct SoundText {
    wxString lines;
    bool whole = true;  ///< nothing was lost, and the encoding is the program's own
};

std::string content_of(const wxString& path) {
    std::ifstream file(path.fn_str(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool is_name(const wxString& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](wxUniChar c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    });
}

/// An entry of the root group, or a comment.
bool is_sound(const wxString& line) {
    if (line.find(wxUniChar(0)) != wxString::npos || !is_well_formed(line))
        return false;
    return line.StartsWith("#") || (line.Contains("=") && is_name(line.BeforeFirst('=')));
}

/// The toolkit trips over names that are empty, groups that bear an entry's name and the like, with
/// a message box; and it goes on writing in the encoding that it has recognised, which need not
/// have the letters of every language.
SoundText sound_text(const std::string& content) {
    SoundText sound;
    wxString text = text_from_utf8(content);
    if (text.empty() && !content.empty()) {
        sound.whole = false;
        text = wxString(content.data(), wxConvAuto(), content.size());
    }
    if (text.StartsWith(wxUniChar(0xFEFF)))
        text.erase(0, 1);
    wxStringTokenizer lines(text, "\r\n", wxTOKEN_STRTOK);
    while (lines.HasMoreTokens()) {
        const wxString line = lines.GetNextToken();
        if (is_sound(line))
            sound.lines += line + "\n";
        else
            sound.whole = false;
    }
    return sound;
}

bool write_text(const wxString& path, const wxString& text) {
    wxTempFile file(path);
    return file.IsOpened() && file.Write(text, wxConvUTF8) && file.Commit();
}

std::unique_ptr<wxFileConfig> settings_in_file(const wxString& path) {
    return std::make_unique<wxFileConfig>("", "", path, "", wxCONFIG_USE_LOCAL_FILE, wxConvAuto());
}

std::unique_ptr<wxFileConfig> settings_in_memory(const wxString& lines) {
    wxStringInputStream stream(lines);
    return std::make_unique<wxFileConfig>(stream, wxConvUTF8);
}

std::unique_ptr<wxFileConfig> usable_settings(const wxString& path) {
    wxStructStat found;
    if (wxStat(path, &found) != 0)
        return settings_in_file(path);
    if (!S_ISREG(found.st_mode)) {
        wxLogWarning("%s is no file; the settings are not kept", path);
        return settings_in_memory("");
    }
    if (found.st_size > kLargestFile) {
        wxLogWarning("%s is too large for settings and is set aside", path);
        return wxRenameFile(path, path + ".bad") ? settings_in_file(path) : settings_in_memory("");
    }
    const SoundText sound = sound_text(content_of(path));
    if (sound.whole)
        return settings_in_file(path);
    wxLogWarning("%s is damaged; what can be read of it is kept", path);
    return write_text(path, sound.lines) ? settings_in_file(path) : settings_in_memory(sound.lines);
}

}  // namespace

std::unique_ptr<wxFileConfig> open_settings(const wxString& path) {
    auto config = usable_settings(path);
    config->SetExpandEnvVars(false);  // a "$" in a folder's name is just that
    return config;
}
