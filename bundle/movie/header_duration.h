#pragma once

#include <nlohmann/json_fwd.hpp>

#include "movie/movie.h"

namespace bundle {

/// Sets the duration of a movie whose start and streams are known, by ffprobe's JSON: that of the
/// file, or where the file holds other streams that may last longer, that of the streams that are
/// taken, as far as they tell it. Matroska tells it in tags, which ffmpeg and mkvmerge write.
void set_duration(Movie& movie, const nlohmann::json& probed);

/// The length of a movie whose clock starts late and whose header gives `movie.duration`: in
/// Matroska and ASF that may be the time on the clock at which the movie ends. It is, unless there
/// are packets that end later, at `last_end` on the clock.
double length_by_header(const Movie& movie, double last_end);

}  // namespace bundle
