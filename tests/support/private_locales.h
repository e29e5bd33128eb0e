#pragma once

#include <wx/string.h>

#include <map>

#include "support/folder.h"

/// Locales for the running test only, and an environment that selects one of them. The destructor
/// restores the environment and the program's locale.
class PrivateLocales {
  public:
    PrivateLocales();
    ~PrivateLocales();
    PrivateLocales(const PrivateLocales&) = delete;
    PrivateLocales& operator=(const PrivateLocales&) = delete;

    /// Makes a locale such as "de_DE.UTF-8", which takes a second; false if that fails.
    bool make(const wxString& name) const;

    /// Sets one of the variables that choose the locale and the languages; empty: unsets it.
    static void environment(const wxString& variable, const wxString& value);

  private:
    Folder folder;
    std::map<wxString, wxString> before;
};
