#include "movie/frame_steps.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <vector>

#include "core/json_reading.h"
#include "core/numbers.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr std::size_t kFewestFrames = 16;

// How much of a step counts as uneven, how much of all steps makes a movie so.
constexpr double kUnevenStep = 0.3;
constexpr double kUnevenShare = 0.3;

/// `times` in seconds, in any order.
bool are_uneven(std::vector<double> times, double usual) {
    if (times.size() < kFewestFrames) {
        return false;
    }
    std::sort(times.begin(), times.end());
    double uneven = 0;
    for (std::size_t i = 1; i < times.size(); ++i) {
        uneven += std::abs(times[i] - times[i - 1] - usual) > kUnevenStep * usual ? 1 : 0;
    }
    return uneven > kUnevenShare * static_cast<double>(times.size());
}

}  // namespace

void mark_uneven_steps(json& probed) {
    std::map<int, std::vector<double>> times;
    for (const json& packet : member(probed, "packets")) {
        if (const auto time = parse_decimal(text(packet, "pts_time"))) {
            times[whole(packet, "stream_index")].push_back(*time);
        }
    }
    if (!probed.contains("streams")) {
        return;
    }
    for (json& stream : probed["streams"]) {
        const auto rate = parse_rational(text(stream, "avg_frame_rate"));
        if (text(stream, "codec_type") == "video" && rate &&
            are_uneven(times[whole(stream, "index")], 1 / rate->value())) {
            stream["has_uneven_steps"] = 1;
        }
    }
}

}  // namespace bundle
