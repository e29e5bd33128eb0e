#pragma once

#include <wx/arrstr.h>

/// Those of `paths`, in their order, that neither `held` nor an earlier one of them names already;
/// letter case does not count. Takes time in proportion to the two lists' lengths together.
wxArrayString new_movies(const wxArrayString& held, const wxArrayString& paths);
