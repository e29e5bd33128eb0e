#include "movie/programs.h"

#include <nlohmann/json.hpp>

#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

std::set<int> streams_of(const json& program) {
    std::set<int> streams;
    for (const json& stream : member(program, "streams")) {
        streams.insert(whole(stream, "index"));
    }
    return streams;
}

}  // namespace

std::set<int> streams_of_other_programs(const json& probed, int index) {
    std::set<int> own;
    std::set<int> others;
    for (const json& program : member(probed, "programs")) {
        auto streams = streams_of(program);
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
