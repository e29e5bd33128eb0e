#pragma once

#include <wx/string.h>

#include <ostream>

#include "support/temporary_folder.h"

/// A temporary folder with the toolkit's strings.
class Folder {
  public:
    wxString path() const { return wxString::FromUTF8(folder.path().string()); }

    /// Full path of `name` in the folder.
    wxString file(const wxString& name) const;

    /// Writes a file of that name and returns its full path.
    wxString write(const wxString& name, const wxString& content = "x") const;

    void remove(const wxString& name) const;

  private:
    TemporaryFolder folder;
};

/// The content of the file as text; empty if there is no file.
wxString file_text(const wxString& path);

/// Prints wide texts readably when an expectation fails.
void PrintTo(const wxString& text, std::ostream* out);
