#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "core/stop_signals.h"

namespace bundle {

/// Finds the length of a movie that has to be added up, and puts it into ffprobe's JSON on it, in
/// seconds as "summed_length": that of a format without a clock, such as raw H.264 or animated PNG,
/// of all its packets; that of joined Ogg movies of theirs. The latter
/// are also given the input options that they need. Does nothing for other movies, and for
/// one that is too large to be read for its report.
void set_summed_length(nlohmann::json& probed, const std::string& path, const StopSignals& stop);

/// The sum of `duration_time` of all "packets" in ffprobe's JSON, in seconds; empty when one of
/// them has none.
std::optional<double> sum_of_packets(const nlohmann::json& probed);

}  // namespace bundle
