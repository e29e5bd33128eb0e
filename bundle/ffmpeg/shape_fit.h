#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// True when frames of another shape can be fitted into the movie's. Otherwise every change of the
/// shape rebuilds ffmpeg's filters, which costs the frames that they hold back.
bool can_fit_shapes(const VideoStream& video);

/// What brings every frame to the movie's stored size, with black bars where its shape is another,
/// as ffmpeg's "-vf" takes it, with a comma at the end; empty where that can't be done. Frames of
/// the movie's own shape pass untouched. Rotated movies are upright at this place.
std::string fit_filters(const VideoStream& video);

}  // namespace bundle
