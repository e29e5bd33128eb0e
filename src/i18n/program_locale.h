#pragma once

/// Sets the locale that the environment names. File names and the environment are always read as
/// UTF-8: C.UTF-8 replaces a locale that is not installed or has another encoding. Decimals keep
/// their point, and letter case is the same in all languages.
///
/// Call once, before anything is read from the environment. Does nothing on Mac OS X, where the
/// toolkit sets the locale.
void take_up_system_locale();
