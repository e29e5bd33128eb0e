#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// Sets "has_jittery_times" to 1 in those audio streams of ffprobe's JSON whose packets come at
/// jittery times: some begin well before the one before them ends. Rounded times and gaps are not
/// jitter. Judged by `pts_time` and `duration_time` of the "packets" in it.
void mark_jittery_streams(nlohmann::json& probed);

}  // namespace bundle
