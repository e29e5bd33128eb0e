#pragma once

#include <string>

#include "core/result.h"

namespace bundle {

/// Finds the system's program `name`: what the environment variable `variable` names (an absolute
/// path), else the first executable of that name in a folder of PATH.
///
/// Relative and empty entries of PATH are passed over, so that the current folder is never
/// searched. This program itself and its neighbours in the bundle, which bear the same names, are
/// never the answer, by whatever link they are reached.
Result<std::string> find_system_tool(const std::string& name, const char* variable);

/// The path of a program that lies beside this one, whether there is one or not.
std::string beside_this_tool(const std::string& name);

/// The system's ffmpeg, or the one that VANTREO_FFMPEG names.
Result<std::string> find_ffmpeg();

/// The system's ffprobe, or the one that VANTREO_FFPROBE names.
Result<std::string> find_ffprobe();

}  // namespace bundle
