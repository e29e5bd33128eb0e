#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "core/result.h"
#include "movie/movie.h"

namespace bundle {

/// Why there is no video that can be converted in ffprobe's JSON: there is only audio, only a still
/// picture, a format without a decoder, or nothing at all.
Failure no_video(const nlohmann::json& probed);

/// True when a video stream is encrypted (DRM): ffmpeg has no key.
bool is_protected(const nlohmann::json& probed);

Failure protected_movie();

/// Why the program rejects this movie, whose report lacks something, as the end of "FILE cannot be
/// converted: "; empty if it accepts the movie.
std::optional<std::string> rejection_of(const Movie& movie);

}  // namespace bundle
