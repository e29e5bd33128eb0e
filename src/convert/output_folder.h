#pragma once

#include <wx/string.h>

/// Whether `folder` is an absolute path to a folder that exists. A relative path would name one
/// inside the folder that the program runs in, its own; "~" has no meaning in a path.
bool is_absolute_folder(const wxString& folder);
