#include "movie/frame_steps.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

/// True when frames at these milliseconds, in a stream of 30 frames a second, are found uneven.
bool are_uneven(const std::vector<int>& times) {
    json packets = json::array();
    for (const int time : times) {
        packets.push_back({{"stream_index", 0}, {"pts_time", std::to_string(time / 1000.0)}});
    }
    json probed{
        {"streams", {{{"index", 0}, {"codec_type", "video"}, {"avg_frame_rate", "30000/1001"}}}},
        {"packets", packets}};
    mark_uneven_steps(probed);
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

TEST(FrameSteps, AreNotLookedForWhereThereAreNoStreams) {
    json probed = json::object();
    mark_uneven_steps(probed);
    EXPECT_EQ(probed, json::object());
}

}  // namespace
}  // namespace bundle
