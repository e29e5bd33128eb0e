#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// True when two audio streams in ffprobe's JSON are the two sides of one sound, as cameras record
/// it in MOV and MXF: mono PCM that nothing sets apart, neither language, title, marks nor times.
/// `format` is the file's.
bool are_two_sides(const nlohmann::json& format, const nlohmann::json& one,
                   const nlohmann::json& other);

}  // namespace bundle
