#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "movie/movie.h"

namespace bundle {

/// ffprobe's JSON on a movie, for a report. It is kept for the conversion that usually follows.
/// Failures name the file.
Result<nlohmann::json> probe_for_report(const std::string& path, const StopSignals& stop);

/// The same for a conversion: the JSON that was kept, or a new one.
Result<nlohmann::json> probe_for_conversion(const std::string& path, const StopSignals& stop);

/// The movie in ffprobe's JSON, without the streams whose indexes are in `unusable`. Reads packets
/// if that is necessary to tell a video from a single picture, or to find the length. Failures name
/// the file.
Result<Movie> find_movie(const std::string& path, const nlohmann::json& probed,
                         const std::set<int>& unusable, const StopSignals& stop);

/// The same for a conversion, with `Movie::text_start`.
Result<Movie> find_movie_to_convert(const std::string& path, const nlohmann::json& probed,
                                    const std::set<int>& unusable, const StopSignals& stop);

}  // namespace bundle
