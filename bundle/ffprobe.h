#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "film.h"
#include "lifetime.h"
#include "result.h"

namespace bundle {

/// What the system's ffprobe tells about a file: `entries`, in the words of its `-show_entries`, as
/// JSON. Its messages are not repeated, only its reason for a failure: they hold the file's name.
Result<nlohmann::json> probe_entries(const std::string& path, const std::string& entries,
                                     const StopSignals& stop);

/// The film in a file.
Result<Film> probe_film(const std::string& path, const StopSignals& stop);

}  // namespace bundle
