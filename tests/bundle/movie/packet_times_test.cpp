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
    mark_streams(probed);
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
    mark_streams(probed);
    EXPECT_EQ(probed, json::object());
}

/// ffprobe's JSON on 20 packets of 24 ms that begin every `step` ms, every fifth one `wait` later.
json probed(int step, const char* codec = "mp3", const char* format = "avi", int wait = 0) {
    json packets = json::array();
    for (int i = 0; i < 20; ++i) {
        packets.push_back({{"stream_index", 0}, {"duration_time", "0.040000"}});
        packets.push_back({{"stream_index", 1},
                           {"pts_time", std::to_string((i * step + i / 5 * wait) / 1000.0)},
                           {"duration_time", "0.024000"}});
    }
    return {{"format", {{"format_name", format}}},
            {"streams", {{{"index", 0}}, {{"index", 1}, {"codec_name", codec}}}},
            {"packets", packets}};
}

bool are_false(json answer) {
    mark_streams(answer);
    EXPECT_FALSE(answer["streams"][0].contains("has_false_times"));
    return answer["streams"][1].contains("has_false_times");
}

TEST(CountedTimes, AreFalseWherePacketsComeFasterOrSlowerThanTheyPlay) {
    EXPECT_TRUE(are_false(probed(19)));
    EXPECT_TRUE(are_false(probed(30)));
    EXPECT_TRUE(are_false(probed(19, "mp3", "avi", 25)));
    EXPECT_FALSE(are_false(probed(24)));
}

TEST(CountedTimes, AreLookedAtInMp3AndAviOnly) {
    EXPECT_FALSE(are_false(probed(19, "aac")));
    EXPECT_FALSE(are_false(probed(19, "mp3", "matroska,webm")));
}

TEST(CountedTimes, AreNotJudgedByAFewPackets) {
    json few = probed(19);
    few["packets"].erase(few["packets"].begin() + 20, few["packets"].end());
    EXPECT_FALSE(are_false(few));
}

/// True when frames at these milliseconds, in a stream of 30 frames a second, are found uneven.
bool are_uneven(const std::vector<int>& times) {
    json packets = json::array();
    for (const int time : times) {
        packets.push_back({{"stream_index", 0}, {"pts_time", std::to_string(time / 1000.0)}});
    }
    json probed{
        {"streams", {{{"index", 0}, {"codec_type", "video"}, {"avg_frame_rate", "30000/1001"}}}},
        {"packets", packets}};
    mark_streams(probed);
    return probed["streams"][0].contains("has_uneven_steps");
}

TEST(FrameSteps, AreUnevenInA3To2Pulldown) {
    std::vector<int> times;
    for (int i = 0; i < 20; ++i) {
        times.push_back(i * 5 / 2 * 1001 / 60);
    }
    EXPECT_TRUE(are_uneven(times));
    times.resize(10);
    EXPECT_FALSE(are_uneven(times));
}

TEST(FrameSteps, AreEvenInAnyOrderAndRoundedAndWithoutSomeFrames) {
    std::vector<int> times;
    for (int i = 0; i < 40; ++i) {
        if (i % 15 != 5) {
            times.push_back((i ^ 1) * 1001 / 30);
        }
    }
    EXPECT_FALSE(are_uneven(times));
}

}  // namespace
}  // namespace bundle
