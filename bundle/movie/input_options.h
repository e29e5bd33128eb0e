#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// Options that ffprobe and ffmpeg need before "-i" to see the same streams of a file.
using InputOptions = std::vector<std::string>;

/// Makes a transport stream whose stream numbers (PIDs) change on the way one whole, for a file
/// that begins with `head`; none for any other.
InputOptions options_by_head(std::string_view head);

/// As much of a file's beginning as `options_by_head` needs; less of a smaller file.
std::string read_head(const std::string& path);

/// Makes ffprobe look through the first 64 MB, or two minutes, for sound.
InputOptions look_far(InputOptions options);

/// True when ffprobe's JSON is on a file of which sound may show up later on: one whose header does
/// not list its streams, without sound so far that can be decoded.
bool sound_may_begin_later(const nlohmann::json& probed);

/// Keeps the options in ffprobe's JSON, which was made with them.
void keep_input_options(nlohmann::json& probed, const InputOptions& options);

/// The options that are kept in ffprobe's JSON.
InputOptions input_options(const nlohmann::json& probed);

}  // namespace bundle
