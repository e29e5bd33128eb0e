#include "ffmpeg/level.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

constexpr double kNtsc = 30000.0 / 1001;

TEST(H264Level, IsTheAskedOneWhereItWillDo) {
    EXPECT_EQ(h264_level(30, 480, 270, kNtsc, 2), 30);
    EXPECT_EQ(h264_level(30, 720, 576, 25, 2), 30);
    EXPECT_EQ(h264_level(30, 16, 16, 1, 2), 30);
}

TEST(H264Level, RisesWithThePictureSize) {
    EXPECT_EQ(h264_level(30, 960, 540, kNtsc, 2), 31);
    EXPECT_EQ(h264_level(30, 1024, 576, kNtsc, 2), 31);
    EXPECT_EQ(h264_level(30, 1024, 1024, kNtsc, 2), 32);
    EXPECT_EQ(h264_level(30, 1920, 1080, 25, 2), 40);
}

TEST(H264Level, RisesWithTheFrameRate) {
    EXPECT_EQ(h264_level(30, 720, 576, kNtsc, 2), 31);
    EXPECT_EQ(h264_level(30, 720, 480, 30, 2), 30);
    EXPECT_EQ(h264_level(30, 720, 480, 31, 2), 31);
}

TEST(H264Level, RisesWithTheReferenceFrames) {
    EXPECT_EQ(h264_level(30, 720, 576, 25, 5), 30);
    EXPECT_EQ(h264_level(30, 720, 576, 25, 6), 31);
}

TEST(H264Level, BoundsTheLengthOfEachSide) {
    // 100 macroblocks of 16 x 16 wide, two high: small, but wider than the root of 8 x 1000.
    EXPECT_EQ(h264_level(10, 1600, 32, 1, 1), 22);
    EXPECT_EQ(h264_level(10, 32, 1600, 1, 1), 22);
}

TEST(H264Level, IsTheLowestWhenNoneIsAsked) {
    EXPECT_EQ(h264_level(0, 176, 144, 15, 1), 10);
}

TEST(H264Level, IsTheHighestBeyondAllLimits) {
    EXPECT_EQ(h264_level(30, 16384, 16384, 60, 2), 62);
}

}  // namespace
}  // namespace bundle
