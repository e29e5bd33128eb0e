#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// True when two audio streams in ffprobe's JSON are the left and the right side of one recording,
/// as cameras store it in MOV and MXF: mono PCM with the same language, flags and times and without
/// titles. `format` is the file's.
bool are_two_sides(const nlohmann::json& format, const nlohmann::json& one,
                   const nlohmann::json& other);

}  // namespace bundle
