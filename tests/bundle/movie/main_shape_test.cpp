#include "movie/main_shape.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

std::string longest(const std::vector<std::string>& lines, std::optional<double> end) {
    ShapeTimes shapes;
    for (const std::string& line : lines) {
        shapes.add(line);
    }
    return shapes.longest(end).value_or("none");
}

TEST(MainShape, IsThatOfMostOfTheTime) {
    EXPECT_EQ(longest({"0.5,720,576,16:15", "1.5,720,576,64:45,"}, 9), "720,576,64:45");
    EXPECT_EQ(longest({"0,720,576,16:15", "0.5,720,576,16:15", "1,1280,720,1:1"}, 9),
              "1280,720,1:1");
    EXPECT_EQ(longest({"0,640,480,N/A", "8,480,640,N/A"}, 9), "640,480,N/A");
}

TEST(MainShape, IsTheFirstOneOfThoseThatLastAsLong) {
    EXPECT_EQ(longest({"0,640,480,1:1", "2,480,640,1:1"}, 4), "640,480,1:1");
}

TEST(MainShape, CountsFramesWhereNoTimesAreTold) {
    EXPECT_EQ(longest({"N/A,640,480,1:1", "N/A,480,640,1:1", "N/A,480,640,1:1"}, {}),
              "480,640,1:1");
}

TEST(MainShape, IsUnknownWithoutFrames) {
    EXPECT_EQ(longest({"", "0.1", "0.1,0,0,1:1", "x"}, 4), "none");
}

TEST(MainShape, IsAskedForWhereItMayChange) {
    EXPECT_TRUE(may_change_shape("mpegts", "h264"));
    EXPECT_TRUE(may_change_shape("matroska,webm", "vp8"));
    EXPECT_FALSE(may_change_shape("matroska,webm", "h264"));
    EXPECT_FALSE(may_change_shape("mov,mp4,m4a,3gp,3g2,mj2", "h264"));
}

}  // namespace
}  // namespace bundle
