#include <gtest/gtest.h>
#include <wx/init.h>

#include "i18n/program_locale.h"
#include "support/asserts.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    fail_tests_on_toolkit_asserts();
    take_up_system_locale();
    const wxInitializer toolkit;
    return toolkit.IsOk() ? RUN_ALL_TESTS() : 1;
}
