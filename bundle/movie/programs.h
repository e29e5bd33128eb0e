#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>

namespace bundle {

/// The numbers of the streams in ffprobe's JSON that belong to other programmes of a transport
/// stream than the stream `index` does. Streams of no programme belong to all.
std::set<int> streams_of_other_programmes(const nlohmann::json& probed, int index);

}  // namespace bundle
