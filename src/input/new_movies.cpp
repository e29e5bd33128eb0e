#include "input/new_movies.h"

#include <wx/hashmap.h>

#include <unordered_set>

wxArrayString new_movies(const wxArrayString& held, const wxArrayString& paths) {
    std::unordered_set<wxString, wxStringHash, wxStringEqual> known;
    for (const wxString& path : held)
        known.insert(path.Lower());

    wxArrayString added;
    for (const wxString& path : paths) {
        if (known.insert(path.Lower()).second)
            added.Add(path);
    }
    return added;
}
