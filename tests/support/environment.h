#pragma once

#include <wx/string.h>
#include <wx/utils.h>

/// Sets an environment variable during its lifetime and restores the old state afterwards.
class Environment {
  public:
    Environment(const wxString& variable, const wxString& value)
        : name(variable), wasSet(wxGetEnv(name, &before)) {
        wxSetEnv(name, value);
    }
    ~Environment() {
        if (wasSet)
            wxSetEnv(name, before);
        else
            wxUnsetEnv(name);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    wxString name;
    wxString before;
    bool wasSet;
};
