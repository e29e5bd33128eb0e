#include "input/DnDtextMovies.h"

#include <wx/listbox.h>

#include "app/Vantreo.h"
#include "input/movie_list.h"

DnDtextMovies::DnDtextMovies(Vantreo* owner, wxListBox* movies) : frame(owner), list(movies) {}

bool DnDtextMovies::OnDropFiles(wxCoord, wxCoord, const wxArrayString& filenames) {
    if (!list->IsThisEnabled())
        return true;
    add_movies(*list, filenames);
    frame->layout_movies();
    return true;
}
