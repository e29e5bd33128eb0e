#pragma once

#include <string>

#include "movie/movie.h"
#include "ffmpeg/request.h"

namespace bundle {

/// What makes the asked picture of a film's upright one, as ffmpeg's "-vf" takes it: deinterlaced
/// where a frame says that it is interlaced, at the asked rate, of the asked size with even sides,
/// in square pixels, with its colours named. `has_zscale`: see `colour_plan`.
std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool has_zscale);

}  // namespace bundle
