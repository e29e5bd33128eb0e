#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>

namespace bundle {

/// The indexes of the streams in ffprobe's JSON that belong only to other programs of a transport
/// stream than the stream `index`. A stream without a program belongs to all.
std::set<int> streams_of_other_programs(const nlohmann::json& probed, int index);

}  // namespace bundle
