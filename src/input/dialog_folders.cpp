#include "input/dialog_folders.h"

#include <wx/filename.h>
#include <wx/stdpaths.h>

#include "convert/output_folder.h"

namespace {

wxString home_folder() {
    const wxString home = wxFileName::GetHomeDir();
    return is_absolute_folder(home) ? home : wxString(wxFileName::GetPathSeparator());
}

}  // namespace

wxString movie_dialog_folder(const wxString& last) {
    if (is_absolute_folder(last))
        return last;
    const wxString videos = wxStandardPaths::Get().GetUserDir(wxStandardPaths::Dir_Videos);
    return is_absolute_folder(videos) ? videos : home_folder();
}

wxString output_dialog_folder(const wxString& saved) {
    if (is_absolute_folder(saved))
        return saved;
    wxFileName above = wxFileName::DirName(saved);
    while (above.GetDirCount() > 0) {
        if (is_absolute_folder(above.GetPath()))
            return above.GetPath();
        above.RemoveLastDir();
    }
    return home_folder();
}
