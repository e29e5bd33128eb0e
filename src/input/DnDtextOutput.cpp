#include "input/DnDtextOutput.h"

#include <wx/filename.h>
#include <wx/textctrl.h>

DnDtextOutput::DnDtextOutput(wxTextCtrl* output) : text(output) {}

bool DnDtextOutput::OnDropFiles(wxCoord, wxCoord, const wxArrayString& filenames) {
    if (filenames.empty() || !text->IsThisEnabled())
        return true;
    const wxString& path = filenames[0];
    const bool isFile = wxFileName::FileExists(path);
    text->SetValue(isFile ? wxFileName(path).GetPath(wxPATH_GET_VOLUME) : path);
    return true;
}
