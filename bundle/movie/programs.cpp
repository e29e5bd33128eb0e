#include "movie/programmes.h"

#include <nlohmann/json.hpp>

#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

std::set<int> streams_of(const json& programme) {
    std::set<int> streams;
    for (const json& stream : member(programme, "streams")) {
        streams.insert(whole(stream, "index"));
    }
    return streams;
}

}  // namespace

std::set<int> streams_of_other_programmes(const json& probed, int index) {
    std::set<int> own;
    std::set<int> others;
    for (const json& programme : member(probed, "programs")) {
        auto streams = streams_of(programme);
        (streams.contains(index) ? own : others).merge(streams);
    }
    if (own.empty()) {
        return {};
    }
    for (const int stream : own) {
        others.erase(stream);
    }
    return others;
}

}  // namespace bundle
