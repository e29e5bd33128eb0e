#include "support/asserts.h"

#include <gtest/gtest.h>
#include <wx/debug.h>
#include <wx/string.h>

void fail_tests_on_toolkit_asserts() {
    wxSetAssertHandler([](const wxString& file, int line, const wxString& function,
                          const wxString& condition, const wxString& message) {
        ADD_FAILURE() << file.utf8_string() << ":" << line << " " << function.utf8_string() << ": "
                      << condition.utf8_string() << " (" << message.utf8_string() << ")";
    });
}
