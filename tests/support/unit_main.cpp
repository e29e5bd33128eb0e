#include <gtest/gtest.h>
#include <wx/init.h>

#include <clocale>

#include "support/asserts.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    fail_tests_on_toolkit_asserts();
    std::setlocale(LC_CTYPE, "C.UTF-8");  // the program gets its locale from GTK
    const wxInitializer toolkit;
    return toolkit.IsOk() ? RUN_ALL_TESTS() : 1;
}
