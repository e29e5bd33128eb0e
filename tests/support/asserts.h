#pragma once

/// Makes every failed toolkit assertion a test failure, instead of a dialog that no one answers.
void fail_tests_on_toolkit_asserts();
