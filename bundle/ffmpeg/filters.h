#pragma once

#include <string>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// The "-vf" filters that turn the upright picture of a movie into the requested one: marked frames
/// deinterlaced, at the requested rate and size with even sides, in square pixels, with named
/// colours. `convert_colours`: see `colour_plan`.
std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool convert_colours);

}  // namespace bundle
