#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <optional>

/// Has the toolkit show its own texts, such as the buttons of message boxes and the file dialogs,
/// in the language that `chosen` names natively; in English when it is none of `native`, or where
/// the toolkit has no translation. Dialogs that are open keep their texts. `english` holds the
/// English names in the order of `native`.
///
/// The environment variable LANGUAGE carries the language, which only gettext follows.
void set_toolkit_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& chosen);

/// While one lives, the variables that the program and its toolkit set for themselves have the
/// values that the program was started with. What is started in the meantime, the browser for
/// instance, gets the user's languages and not the window's.
class UserEnvironment {
  public:
    UserEnvironment();
    ~UserEnvironment();
    UserEnvironment(const UserEnvironment&) = delete;
    UserEnvironment& operator=(const UserEnvironment&) = delete;

  private:
    std::optional<wxString> language;
    std::optional<wxString> fileNames;
};
