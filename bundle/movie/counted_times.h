#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// Sets "has_false_times" to 1 in those MP3 streams of ffprobe's JSON on an AVI file whose packets
/// don't follow one another: AVI counts the time of sound by its bytes, which is wrong for a
/// variable bit rate. Judged by `pts_time` and `duration_time` of the "packets" in it.
void mark_false_times(nlohmann::json& probed);

}  // namespace bundle
