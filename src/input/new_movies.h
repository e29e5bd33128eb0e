#pragma once

#include <wx/arrstr.h>

/// Those of `paths`, in order, that are neither in `held` nor earlier in `paths`, ignoring letter
/// case. Takes linear time.
wxArrayString new_movies(const wxArrayString& held, const wxArrayString& paths);
