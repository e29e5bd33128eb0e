#pragma once

#include <wx/string.h>

/// Where the movie dialog opens: in `last`, the folder that movies were last chosen from in it, or
/// where that is empty or gone, in the person's Videos folder, or else in the home folder. The
/// result is absolute and exists.
wxString movie_dialog_folder(const wxString& last);

/// Where the folder dialog opens: in the folder `saved`, or where that is gone, in the nearest one
/// above it that is not the root; in the home folder when there is none, or when `saved` is a
/// relative path. The result is absolute and exists.
wxString output_dialog_folder(const wxString& saved);
