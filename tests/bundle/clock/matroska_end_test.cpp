#include "clock/matroska_end.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

using namespace std::string_literals;

const std::string kHead = "\x1A\x45\xDF\xA3..\x2A\xD7\xB1\x83\x0F\x42\x40..";
const std::string kFirst = "\x1F\x43\xB6\x75\x42\x10\xE7\x81\x05...";

TEST(MatroskaEnd, IsWhereTheLastClusterBegins) {
    const std::string last = "\x1F\x43\xB6\x75\x01\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xE7\x82\x03\xE8...";
    EXPECT_EQ(last_cluster_time(kHead, kFirst), 0.005);
    EXPECT_EQ(last_cluster_time(kHead, kFirst + last), 1);
    EXPECT_EQ(last_cluster_time("", kFirst + last), 1);
}

TEST(MatroskaEnd, IsFoundBehindAChecksumAndInOtherTicks) {
    const std::string tail =
        "\x1F\x43\xB6\x75\x84\xBF\x84"
        "abcd\xE7\x81\x05...";
    EXPECT_EQ(last_cluster_time("\x2A\xD7\xB1\x84\x3B\x9A\xCA\x00"s, tail), 5);
}

TEST(MatroskaEnd, IsUnknownWithoutAWholeCluster) {
    EXPECT_EQ(last_cluster_time(kHead, ""), std::nullopt);
    EXPECT_EQ(last_cluster_time(kHead, "\x1F\x43\xB6\x75"), std::nullopt);
    EXPECT_EQ(last_cluster_time(kHead, "\x1F\x43\xB6\x75\x84\xE7\x84\x01"), std::nullopt);
    EXPECT_EQ(last_cluster_time(kHead, "\x1F\x43\xB6\x75\x84\xA3\x81\x01"), std::nullopt);
}

}  // namespace
}  // namespace bundle
