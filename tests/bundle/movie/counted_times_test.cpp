#include "movie/counted_times.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

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
    mark_false_times(answer);
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

TEST(CountedTimes, AreNotLookedForWhereThereAreNoStreams) {
    json none{{"format", {{"format_name", "avi"}}}};
    const json before = none;
    mark_false_times(none);
    EXPECT_EQ(none, before);
}

}  // namespace
}  // namespace bundle
