#include "movie/packet_times.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "core/json_reading.h"
#include "core/numbers.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr std::size_t kFewestPackets = 16;

// Times that are rounded to milliseconds overlap by one or two.
constexpr double kOverlap = 0.005;

// A single one may be where two files were joined.
constexpr int kFewestOverlaps = 2;

// Rounding makes the times of a constant bit rate wrong by a tenth of this share.
constexpr double kToleratedError = 0.02;

// A step is uneven if it differs by this share, and a movie if this share of its steps is.
constexpr double kUnevenStep = 0.3;
constexpr double kUnevenShare = 0.3;

/// Both in seconds.
struct Packet {
    std::optional<double> start;
    std::optional<double> length;

    std::optional<double> end() const {
        return start && length ? std::optional(*start + *length) : std::nullopt;
    }
};

using Packets = std::vector<Packet>;

std::map<int, Packets> packets_of_streams(const json& probed) {
    std::map<int, Packets> streams;
    for (const json& packet : member(probed, "packets")) {
        streams[whole(packet, "stream_index")].push_back(
            {parse_decimal(text(packet, "pts_time")),
             parse_decimal(text(packet, "duration_time"))});
    }
    return streams;
}

bool are_jittery(const Packets& packets) {
    int overlaps = 0;
    std::optional<double> end;
    for (const Packet& packet : packets) {
        overlaps += packet.start && end && *packet.start < *end - kOverlap ? 1 : 0;
        end = packet.end();
    }
    return overlaps >= kFewestOverlaps;
}

bool are_false(Packets packets) {
    std::erase_if(packets, [](const Packet& packet) { return !packet.end(); });
    double wrong = 0;
    double played = 0;
    std::optional<double> end;
    for (const Packet& packet : packets) {
        wrong += end ? std::abs(*packet.start - *end) : 0;
        played += *packet.length;
        end = packet.end();
    }
    return packets.size() >= kFewestPackets && wrong > kToleratedError * played;
}

/// `usual` is the length of a frame in seconds. Packets come in decoding order.
bool are_uneven(Packets packets, double usual) {
    std::erase_if(packets, [](const Packet& packet) { return !packet.start; });
    std::sort(packets.begin(), packets.end(),
              [](const Packet& one, const Packet& other) { return *one.start < *other.start; });
    double uneven = 0;
    for (std::size_t at = 1; at < packets.size(); ++at) {
        const double step = *packets[at].start - *packets[at - 1].start;
        uneven += std::abs(step - usual) > kUnevenStep * usual ? 1 : 0;
    }
    return packets.size() >= kFewestPackets &&
           uneven > kUnevenShare * static_cast<double>(packets.size());
}

void mark(json& stream, const Packets& packets, bool is_avi) {
    const std::string type = text(stream, "codec_type");
    const auto rate = parse_rational(text(stream, "avg_frame_rate"));
    if (type == "audio" && are_jittery(packets)) {
        stream["has_jittery_times"] = 1;
    }
    if (is_avi && text(stream, "codec_name") == "mp3" && are_false(packets)) {
        stream["has_false_times"] = 1;
    }
    if (type == "video" && rate && are_uneven(packets, 1 / rate->value())) {
        stream["has_uneven_steps"] = 1;
    }
}

}  // namespace

void mark_streams(json& probed) {
    if (!probed.contains("streams")) {
        return;
    }
    auto packets = packets_of_streams(probed);
    const bool is_avi = text(member(probed, "format"), "format_name") == "avi";
    for (json& stream : probed["streams"]) {
        mark(stream, packets[whole(stream, "index")], is_avi);
    }
}

}  // namespace bundle
