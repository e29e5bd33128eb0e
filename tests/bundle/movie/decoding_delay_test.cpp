#include "movie/decoding_delay.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

int delay_in(const char* format, const char* codec, const char* sound_start = "0.000000") {
    const nlohmann::json probed{
        {"format", {{"format_name", format}}},
        {"packets", {{{"stream_index", 0}}, {{"stream_index", 1}, {"pts_time", sound_start}}}}};
    return decoding_delay(probed,
                          {{"codec_name", codec}, {"has_b_frames", 2}, {"r_frame_rate", "25/1"}},
                          {{"index", 1}});
}

TEST(DecodingDelay, IsThatOfReorderedFramesInContainersOfDecodingTimes) {
    EXPECT_EQ(delay_in("avi", "h264"), 2);
    EXPECT_EQ(delay_in("avi", "hevc"), 2);
    EXPECT_EQ(delay_in("gxf", "mpeg2video"), 2);
}

TEST(DecodingDelay, IsNoneWhereTheTimesOfDisplayAreKnown) {
    EXPECT_EQ(delay_in("avi", "mpeg4"), 0);
    EXPECT_EQ(delay_in("matroska,webm", "h264"), 0);
}

TEST(DecodingDelay, IsNoneWhereTheSoundStartsAsLate) {
    EXPECT_EQ(delay_in("avi", "h264", "0.078367"), 0);
    EXPECT_EQ(delay_in("avi", "h264", "0.026122"), 2);
}

TEST(DecodingDelay, IsThereInAMovieWithoutSound) {
    const nlohmann::json probed{{"format", {{"format_name", "avi"}}}};
    const nlohmann::json picture{
        {"codec_name", "h264"}, {"has_b_frames", 1}, {"r_frame_rate", "25/1"}};
    EXPECT_EQ(decoding_delay(probed, picture, nullptr), 1);
}

TEST(DecodingDelay, IsTakenOffTheTimes) {
    VideoStream video;
    video.base_rate = Rational{30000, 1001};
    EXPECT_EQ(undelay_filter(video), "");
    video.decoding_delay = 2;
    EXPECT_EQ(undelay_filter(video), "setpts='PTS-min(STARTPTS,round(2002/(30000*TB)))',");
    video.base_rate.reset();
    EXPECT_EQ(undelay_filter(video), "");
}

}  // namespace
}  // namespace bundle
