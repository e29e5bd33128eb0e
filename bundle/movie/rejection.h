#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "core/result.h"
#include "movie/movie.h"

namespace bundle {

/// Why there is no picture that can be converted in what ffprobe reported on a file: sound alone, a
/// still picture, a format that nothing here decodes, or nothing at all.
Failure no_picture(const nlohmann::json& probed);

/// True when a picture in it is encrypted, as that of a bought movie: ffmpeg has no key.
bool is_protected(const nlohmann::json& probed);

Failure protected_movie();

/// Why the program will not take this movie, whose report says too little: what comes after "FILE
/// cannot be converted: ". Empty for a movie that it takes.
std::optional<std::string> rejection_of(const Movie& movie);

}  // namespace bundle
