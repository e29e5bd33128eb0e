#pragma once

#include <string>

#include "movie/movie.h"

namespace bundle {

/// The report on a movie in the form of old ffmpeg versions: one line each for the file, its video
/// and its audio, for instance
///
///       Duration: 00:02:03.45, start: 0.000000, bitrate: 812 kb/s
///         Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc
///         Stream #0.1: Audio: aac, 44100 Hz, stereo
///
/// The number before "tbc", the last one before " tb", is the movie's average frame rate. An
/// unknown duration is "N/A", an unknown rate 0. Free text from the file, such as a title, is never
/// included.
std::string movie_report(const Movie& movie);

}  // namespace bundle
