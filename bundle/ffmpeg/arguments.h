#pragma once

#include <string>
#include <vector>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// The arguments that make today's ffmpeg write the movie as asked: the reported video stream and
/// audio stream, the chapters and the title and nothing else, H.264 Constrained Baseline in 8-bit
/// 4:2:0 at a level that fits, both sides of the picture even, into the file `output`.
/// `has_zscale` tells whether the system's ffmpeg can convert colours; see `colour_plan`.
std::vector<std::string> encoder_arguments(const TranscodeRequest& request, const Movie& movie,
                                           const std::string& output, bool has_zscale);

}  // namespace bundle
