#pragma once

#include <nlohmann/json_fwd.hpp>

#include "movie/movie.h"

namespace bundle {

/// Sets the duration of a film whose start and streams are known, by ffprobe's JSON: that of the
/// file, or where the file holds other streams that may last longer, that of the streams that are
/// taken, as far as they tell it. Matroska tells it in tags, which ffmpeg and mkvmerge write.
void set_duration(Film& film, const nlohmann::json& probed);

/// The length of a film whose clock starts late and whose header gives `film.duration`: in Matroska
/// and ASF that may be the time on the clock at which the film ends. It is, unless there are
/// packets that end later, at `last_end` on the clock.
double length_by_header(const Film& film, double last_end);

}  // namespace bundle
