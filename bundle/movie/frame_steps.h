#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// Sets "has_uneven_steps" to 1 in those video streams of ffprobe's JSON whose frames come at an
/// uneven rate by `pts_time` of the "packets" in it, though the stream may give one rate: a movie
/// of 24 frames a second in the rhythm of 30 (3:2 pulldown). Single frames that are missing don't
/// make it uneven.
void mark_uneven_steps(nlohmann::json& probed);

}  // namespace bundle
