#pragma once

#include <optional>
#include <string>

/// The folder for what the program and its tools leave for each other while they run: that of the
/// session ($XDG_RUNTIME_DIR/vantreo), else one of the user's own among the temporary files. It is
/// made where it is missing. Empty where both cannot be made or are somebody else's.
std::optional<std::string> session_folder();
