#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "movie/movie.h"

namespace bundle {

/// What ffprobe tells about a movie, for a report on it. It is kept for the conversion that usually
/// follows. Failures name the file.
Result<nlohmann::json> probe_for_report(const std::string& path, const StopSignals& stop);

/// The same for a conversion: what the report kept, or asked anew.
Result<nlohmann::json> probe_for_conversion(const std::string& path, const StopSignals& stop);

/// The movie in what ffprobe told about a file, without the streams whose numbers are in
/// `unusable`: a stream of one picture is not the movie, and a length that the header does not tell
/// is taken from the packets. Failures name the file.
Result<Movie> find_movie(const std::string& path, const nlohmann::json& probed,
                         const std::set<int>& unusable, const StopSignals& stop);

/// The same for a conversion, with `Movie::text_start`.
Result<Movie> find_movie_to_convert(const std::string& path, const nlohmann::json& probed,
                                    const std::set<int>& unusable, const StopSignals& stop);

}  // namespace bundle
