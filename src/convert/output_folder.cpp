#include "convert/output_folder.h"

#include <wx/dir.h>
#include <wx/filename.h>

bool is_absolute_folder(const wxString& folder) {
    // To the toolkit a path that begins with "~" is absolute.
    return !folder.StartsWith("~") && wxFileName::DirName(folder).IsAbsolute() &&
           wxDir::Exists(folder);
}
