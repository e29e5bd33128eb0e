#pragma once

#include <string>
#include <vector>

#include "film.h"
#include "transcode_request.h"

namespace bundle {

/// The arguments that make today's ffmpeg write the film as asked: the reported video stream and
/// audio stream and nothing else, H.264 Constrained Baseline in 8-bit 4:2:0 at a level that fits,
/// both sides of the picture even, into the file `output`.
std::vector<std::string> encoder_arguments(const TranscodeRequest& request, const Film& film,
                                           const std::string& output);

}  // namespace bundle
