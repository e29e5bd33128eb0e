#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// True when frames of another shape can be fitted into the film's. Otherwise every change of the
/// shape rebuilds ffmpeg's filters, which costs the frames that they hold back.
bool can_fit_shapes(const VideoStream& video);

/// What brings every frame to the film's stored size, with black bars where its shape is another,
/// as ffmpeg's "-vf" takes it, with a comma at the end; empty where that can't be done. Frames of
/// the film's own shape pass untouched. Rotated films are upright at this place.
std::string fit_filters(const VideoStream& video);

}  // namespace bundle
