#pragma once

#include <nlohmann/json_fwd.hpp>

#include "movie/movie.h"

namespace bundle {

/// Sets the duration of a movie whose start and streams are known from ffprobe's JSON: the file's,
/// or, if the file has other streams that may last longer, that of the chosen streams as far as it
/// is known. Matroska has it in tags, which ffmpeg and mkvmerge write.
void set_duration(Movie& movie, const nlohmann::json& probed);

/// The length of a movie with a late start whose header gives `movie.duration`. In Matroska and ASF
/// that may be the timestamp of the end. It is taken for that unless packets end later, at the
/// timestamp `last_end`.
double length_by_header(const Movie& movie, double last_end);

}  // namespace bundle
