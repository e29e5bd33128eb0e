#pragma once

#include <string>
#include <vector>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// The "-vf" filter for the frame rate, with a comma at the end: a constant rate if one is
/// requested; at most 30 frames in any second if the movie's rate is variable; otherwise nothing.
std::string rate_filter(const TranscodeRequest& request, const VideoStream& video);

/// The output options that keep frame times exact: for a variable rate, and for a low rate, at
/// which ffmpeg's rounding to whole frames would put the video out of sync.
std::vector<std::string> time_options(const TranscodeRequest& request, const VideoStream& video);

/// The highest frame rate that the result has for longer than a moment.
double highest_rate(const TranscodeRequest& request, const VideoStream& video);

}  // namespace bundle
