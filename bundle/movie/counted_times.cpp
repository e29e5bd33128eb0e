#include "movie/counted_times.h"

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>

#include "core/json_reading.h"
#include "core/numbers.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr int kFewestPackets = 16;

// By rounding, the times of a constant bit rate are wrong by a tenth of this share.
constexpr double kTolerated = 0.02;

/// The packets of a stream up to its latest.
struct Times {
    int count = 0;
    double due = 0;     ///< when the next packet should begin, in seconds
    double wrong = 0;   ///< seconds by which packets begin too early or too late after the last one
    double played = 0;  ///< seconds
};

void add_packet(Times& times, const json& packet) {
    const auto start = parse_decimal(text(packet, "pts_time"));
    const auto length = parse_decimal(text(packet, "duration_time"));
    if (!start || !length) {
        return;
    }
    times.wrong += times.count > 0 ? std::abs(*start - times.due) : 0;
    times.due = *start + *length;
    times.played += *length;
    ++times.count;
}

bool are_false(const Times& times) {
    return times.count >= kFewestPackets && times.wrong > kTolerated * times.played;
}

}  // namespace

void mark_false_times(json& probed) {
    if (text(member(probed, "format"), "format_name") != "avi" || !probed.contains("streams")) {
        return;
    }
    std::map<int, Times> streams;
    for (const json& packet : member(probed, "packets")) {
        add_packet(streams[whole(packet, "stream_index")], packet);
    }
    for (json& stream : probed["streams"]) {
        if (text(stream, "codec_name") == "mp3" && are_false(streams[whole(stream, "index")])) {
            stream["has_false_times"] = 1;
        }
    }
}

}  // namespace bundle
