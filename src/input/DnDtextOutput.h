#pragma once

#include <wx/dnd.h>

class wxTextCtrl;

/// Drop target of the output field: takes the folder from what is dropped. The field owns it.
class DnDtextOutput : public wxFileDropTarget {
  public:
    explicit DnDtextOutput(wxTextCtrl* output);

    /// Sets the field to the first path when it is a folder, to the path's folder when it is a
    /// file; during a run nothing changes. Returns true.
    bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& filenames) override;

  private:
    wxTextCtrl* text;
};
