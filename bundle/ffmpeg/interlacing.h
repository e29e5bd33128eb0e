#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// The "-vf" filters that deinterlace the frames that are marked as interlaced, with a comma at the
/// end; empty if no frame can be interlaced. If the decoder marks no frames, the file's field order
/// counts.
std::string deinterlacer(const VideoStream& video);

}  // namespace bundle
