#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "movie/movie.h"

namespace bundle {

/// By how many frames ffmpeg shows the video late: AVI and GXF store when a frame is decoded, not
/// when it is shown, and ffmpeg derives the one from the other for some codecs only. 0 if the first
/// audio packet is just as late: some programs keep both in sync that way. `video` and `audio`,
/// which may be null, are streams in ffprobe's JSON.
int decoding_delay(const nlohmann::json& probed, const nlohmann::json& video,
                   const nlohmann::json& audio);

/// The "-vf" filter that removes that delay, with a comma at the end; empty if there is none.
std::string undelay_filter(const VideoStream& video);

}  // namespace bundle
