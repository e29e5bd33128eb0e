#pragma once

#include <string>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// What makes the asked picture of a movie's upright one, as ffmpeg's "-vf" takes it: deinterlaced
/// where a frame says that it is interlaced, at the asked rate, of the asked size with even sides,
/// in square pixels, with its colours named. `has_zscale`: see `colour_plan`.
std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool has_zscale);

}  // namespace bundle
