#include "input/movie_list.h"

#include <wx/listbox.h>

#include "input/new_movies.h"

void add_movies(wxListBox& list, const wxArrayString& paths) {
    const wxArrayString added = new_movies(list.GetStrings(), paths);
    if (!added.empty())
        list.Append(added);
}
