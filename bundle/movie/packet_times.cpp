#include "movie/packet_times.h"

#include <map>
#include <nlohmann/json.hpp>
#include <optional>

#include "core/json_reading.h"
#include "core/numbers.h"

namespace bundle {

namespace {

using nlohmann::json;

// Times in whole milliseconds overlap by one or two.
constexpr double kOverlap = 0.005;

// One alone may be where two pieces were joined.
constexpr int kFewestOverlaps = 2;

struct Times {
    std::optional<double> end;  ///< of the latest packet, in seconds
    int overlaps = 0;
};

void add_packet(Times& times, const json& packet) {
    const auto start = parse_decimal(text(packet, "pts_time"));
    const auto length = parse_decimal(text(packet, "duration_time"));
    if (start && times.end && *start < *times.end - kOverlap) {
        ++times.overlaps;
    }
    times.end = start && length ? std::optional(*start + *length) : std::nullopt;
}

}  // namespace

void mark_jittery_streams(json& probed) {
    std::map<int, Times> streams;
    for (const json& packet : member(probed, "packets")) {
        add_packet(streams[whole(packet, "stream_index")], packet);
    }
    if (!probed.contains("streams")) {
        return;
    }
    for (json& stream : probed["streams"]) {
        if (text(stream, "codec_type") == "audio" &&
            streams[whole(stream, "index")].overlaps >= kFewestOverlaps) {
            stream["has_jittery_times"] = 1;
        }
    }
}

}  // namespace bundle
