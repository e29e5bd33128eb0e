#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace bundle {

/// Saves the conversion the runs of ffprobe that its report has already made, 60 ms or more a
/// movie. Keeps ffprobe's JSON in $XDG_RUNTIME_DIR, the user's own folder for the session; without
/// one nothing is kept. Never fails: what is not kept is probed again.
///
/// A file is identified by its device, inode, size and times. One that changed within the last
/// seconds is not kept, because its next change might not show in its times.
void remember_probe(const std::string& path, const nlohmann::json& probed);

/// The JSON that is kept for the file; forgets it.
std::optional<nlohmann::json> recall_probe(const std::string& path);

}  // namespace bundle
