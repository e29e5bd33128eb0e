#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// Marks streams in ffprobe's JSON by the `pts_time` and `duration_time` of its "packets". Each
/// mark is a member that is 1:
///
/// - "has_jittery_times", audio: some packets begin well before the previous one ends. Rounded
/// times
///   and gaps are not jitter.
/// - "has_false_times", MP3 in AVI: packets do not follow one another, because AVI derives audio
///   times from byte counts, which is wrong for a variable bit rate.
/// - "has_uneven_steps", video: frames come at uneven intervals, whatever rate the stream states,
/// for
///   instance 24 frames per second as 30 (3:2 pulldown). Single missing frames do not count.
void mark_streams(nlohmann::json& probed);

}  // namespace bundle
