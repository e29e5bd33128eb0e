#pragma once

#include <string>

#include "core/result.h"

namespace bundle {

/// Finds the system's program `name`: the absolute path in the environment variable `variable`,
/// else the first executable of that name in a folder of PATH.
///
/// Skips relative and empty entries of PATH, so that the current folder is never searched, and the
/// bundle's own tools, which have the same names, even when a link leads to them.
Result<std::string> find_system_tool(const std::string& name, const char* variable);

/// The path of a program beside this one, whether it exists or not.
std::string beside_this_tool(const std::string& name);

/// The system's ffmpeg, or the one that VANTREO_FFMPEG names.
Result<std::string> find_ffmpeg();

/// The system's ffprobe, or the one that VANTREO_FFPROBE names.
Result<std::string> find_ffprobe();

}  // namespace bundle
