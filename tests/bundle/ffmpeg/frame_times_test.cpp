#include "ffmpeg/frame_times.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

using Words = std::vector<std::string>;

VideoStream video_of(Rational average, Rational base) {
    VideoStream video;
    video.average_rate = average;
    video.base_rate = base;
    return video;
}

TranscodeRequest request_of(std::optional<Rational> rate = {}) {
    TranscodeRequest request;
    request.rate = rate;
    return request;
}

Words exact(const std::string& time_base) {
    return {"-fps_mode", "vfr", "-enc_time_base", time_base};
}

TEST(FrameTimes, AreEvenWhereARateIsAskedFor) {
    const auto request = request_of(Rational{30000, 1001});
    const VideoStream video = video_of({50, 1}, {60, 1});
    EXPECT_EQ(rate_filter(request, video), "fps=30000/1001,");
    EXPECT_EQ(time_options(request, video), Words());
    EXPECT_DOUBLE_EQ(highest_rate(request, video), 30000.0 / 1001);
}

TEST(FrameTimes, AreLeftToTheEncoderWhereTheyAreEven) {
    const VideoStream video = video_of({24000, 1001}, {24000, 1001});
    EXPECT_EQ(rate_filter(request_of(), video), "");
    EXPECT_EQ(time_options(request_of(), video), Words());
    EXPECT_DOUBLE_EQ(highest_rate(request_of(), video), 24000.0 / 1001);
}

TEST(FrameTimes, AreKeptWhereTheyAreUneven) {
    const VideoStream video = video_of({22, 1}, {60, 1});
    EXPECT_EQ(rate_filter(request_of(), video).find("select='"), 0U);
    EXPECT_EQ(time_options(request_of(), video), exact("1:90000"));
}

TEST(FrameTimes, MayBunchUpTo30ASecond) {
    EXPECT_DOUBLE_EQ(highest_rate(request_of(), video_of({22, 1}, {60, 1})), 30);
    EXPECT_DOUBLE_EQ(highest_rate(request_of(), video_of({12, 1}, {24, 1})), 24);
}

TEST(FrameTimes, OfASlowMovieAreExactInWholeTicksPerFrame) {
    EXPECT_EQ(time_options(request_of(), video_of({1, 1}, {1, 1})), exact("1:90000"));
    EXPECT_EQ(time_options(request_of(), video_of({7, 1}, {7, 1})), exact("1:90006"));
    EXPECT_EQ(time_options(request_of(), video_of({15000, 1001}, {15000, 1001})), exact("1:90000"));
}

}  // namespace
}  // namespace bundle
