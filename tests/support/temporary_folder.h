#pragma once

#include <wx/string.h>

#include <ostream>

/// A folder of its own, removed with everything in it at the end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const wxString& path() const { return folder; }

    /// Full path of `name` in the folder.
    wxString file(const wxString& name) const;

    /// Writes a file of that name and returns its full path.
    wxString write(const wxString& name, const wxString& content = "x") const;

  private:
    wxString folder;
};

/// The whole file as text; empty when there is none.
wxString file_text(const wxString& path);

/// Prints wide texts readably when an expectation fails.
void PrintTo(const wxString& text, std::ostream* out);
