#include "movie/packet_times.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

/// True when packets of 20 ms that begin at these milliseconds are found jittery.
bool is_jittery(const std::vector<int>& starts, bool has_lengths = true) {
    json packets = json::array();
    for (const int start : starts) {
        json packet{{"stream_index", 1}, {"pts_time", std::to_string(start / 1000.0)}};
        if (has_lengths) {
            packet["duration_time"] = "0.020000";
        }
        packets.push_back({{"stream_index", 0}, {"pts_time", "0.000000"}});
        packets.push_back(packet);
    }
    json probed{{"streams", {{{"index", 0}}, {{"index", 1}, {"codec_type", "audio"}}}},
                {"packets", packets}};
    mark_jittery_streams(probed);
    EXPECT_FALSE(probed["streams"][0].contains("has_jittery_times"));
    return probed["streams"][1].contains("has_jittery_times");
}

TEST(PacketTimes, AreJitteryWherePacketsBeginBeforeTheLastOneEnds) {
    EXPECT_TRUE(is_jittery({0, 29, 40, 69, 80}));
}

TEST(PacketTimes, AreNotJitteryForGaps) {
    EXPECT_FALSE(is_jittery({0, 20, 60, 80, 200, 220}));
}

TEST(PacketTimes, AreNotJitteryForRoundingOrOneOverlap) {
    EXPECT_FALSE(is_jittery({0, 19, 40, 59, 79, 100, 119}));
    EXPECT_FALSE(is_jittery({0, 20, 40, 50, 70, 90}));
}

TEST(PacketTimes, AreNotJudgedWithoutLengths) {
    EXPECT_FALSE(is_jittery({0, 29, 40, 69, 80}, false));
}

TEST(PacketTimes, AreNotLookedForWhereThereAreNoStreams) {
    json probed = json::object();
    mark_jittery_streams(probed);
    EXPECT_EQ(probed, json::object());
}

}  // namespace
}  // namespace bundle
