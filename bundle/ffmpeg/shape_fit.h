#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// True when `fit_filters` can handle frames of another shape. Otherwise each change of the shape
/// makes ffmpeg rebuild its filters, which loses the frames that they hold.
bool can_fit_shapes(const VideoStream& video);

/// The "-vf" filters that bring every frame to the movie's stored size, with a comma at the end;
/// empty if that is impossible. Frames of another shape get black bars, all others are unchanged. A
/// rotated movie is upright at this point.
std::string fit_filters(const VideoStream& video);

}  // namespace bundle
