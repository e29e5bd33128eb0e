#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// What deinterlaces the frames that are marked as interlaced and leaves all others alone, as
/// ffmpeg's "-vf" takes it, with a comma at the end; empty where no frame can be interlaced. Where
/// a decoder never marks frames, all are as the file says.
std::string deinterlacer(const VideoStream& video);

}  // namespace bundle
