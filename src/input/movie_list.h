#pragma once

#include <wx/arrstr.h>

class wxListBox;

/// Appends each of `paths` that is not in the list yet.
void add_movies(wxListBox& list, const wxArrayString& paths);
