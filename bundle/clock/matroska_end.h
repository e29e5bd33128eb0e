#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// When the last cluster of a Matroska file begins, in seconds on its clock, by the file's
/// beginning and its end (RFC 9559, 5.1.3); empty when it isn't in there.
std::optional<double> last_cluster_time(std::string_view head, std::string_view tail);

/// Removes the lengths from ffprobe's JSON on a Matroska file whose header gives one that is over
/// before the last cluster begins, so that it is measured.
void drop_short_length(nlohmann::json& probed, const std::string& path);

}  // namespace bundle
