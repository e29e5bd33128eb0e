#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "core/stop_signals.h"

namespace bundle {

/// The indexes of the audio streams that have a decoder but cannot be decoded, because they are
/// damaged or encrypted. `probed` is ffprobe's JSON on the file. Decodes the beginnings of all
/// audio streams, and longer beginnings if one of them gives nothing: one or two runs of ffprobe.
/// Blocks.
std::set<int> silent_streams(const std::string& path, const nlohmann::json& probed,
                             const StopSignals& stop);

}  // namespace bundle
