#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <optional>

/// Makes the toolkit show its own texts, such as the buttons of message boxes and the file dialogs,
/// in the language with the native name `chosen`; in English if that is not one of `native`, or if
/// the toolkit has no translation. Open dialogs keep their texts. `english` has the English names
/// in the order of `native`.
///
/// Sets the environment variable LANGUAGE, which only gettext reads.
void set_toolkit_language(const wxArrayString& native, const wxArrayString& english,
                          const wxString& chosen);

/// While one exists, the variables that the program and its toolkit set for themselves have the
/// values that the program was started with. A program that is started then, such as the browser,
/// gets the user's languages and not the window's.
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
