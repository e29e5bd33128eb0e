#pragma once

/// Takes up the locale that the environment names. File names and the environment are read as
/// UTF-8 whatever it says: C.UTF-8 takes the place of a locale that is not installed or has another
/// encoding. Decimals keep their point, and letter case is the same in all languages.
///
/// Call once, before anything is read from the environment. Does nothing on Mac OS X, where the
/// toolkit has done it.
void take_up_system_locale();
