#pragma once

#include <wx/string.h>

#include <map>

#include "support/folder.h"

/// Locales that only the running test knows, and an environment that names one of them. The
/// destructor puts the environment back, and the program's locale.
class PrivateLocales {
  public:
    PrivateLocales();
    ~PrivateLocales();
    PrivateLocales(const PrivateLocales&) = delete;
    PrivateLocales& operator=(const PrivateLocales&) = delete;

    /// Makes a locale such as "de_DE.UTF-8", which takes a second; false when it cannot be made.
    bool make(const wxString& name) const;

    /// Sets one of the variables that choose the locale and the languages; empty: unsets it.
    static void environment(const wxString& variable, const wxString& value);

  private:
    Folder folder;
    std::map<wxString, wxString> before;
};
