#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "movie/movie.h"

namespace bundle {

/// By how many frames ffmpeg shows the picture late: AVI and GXF store when a frame is decoded, not
/// when it is shown, and ffmpeg works the one out from the other for some codecs only. None where
/// the sound's first packet comes as late, by which some makers keep both in step. `picture` and
/// `sound`, which may be null, are streams in ffprobe's JSON.
int decoding_delay(const nlohmann::json& probed, const nlohmann::json& picture,
                   const nlohmann::json& sound);

/// What takes that delay away, as ffmpeg's "-vf" takes it, with a comma at the end; empty without
/// one.
std::string undelay_filter(const VideoStream& video);

}  // namespace bundle
