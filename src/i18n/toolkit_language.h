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

/// While one lives, LANGUAGE has the value that the program was started with. What is started in
/// the meantime, the browser for instance, gets the user's languages and not the window's.
class UserLanguages {
  public:
    UserLanguages();
    ~UserLanguages();
    UserLanguages(const UserLanguages&) = delete;
    UserLanguages& operator=(const UserLanguages&) = delete;

  private:
    std::optional<wxString> before;
};
