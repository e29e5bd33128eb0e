#pragma once

#include <wx/dnd.h>

class Vantreo;
class wxListBox;

/// Drop target of the movie list: adds what is dropped on it. The list owns the target.
class DnDtextMovies : public wxFileDropTarget {
  public:
    DnDtextMovies(Vantreo* owner, wxListBox* movies);

    /// Adds each path that is not in the list yet; during a run nothing changes. Returns true.
    bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& filenames) override;

  private:
    Vantreo* frame;
    wxListBox* list;
};
