#include "movie/summed_length.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

TEST(SummedLength, IsThatOfAllPackets) {
    const json packet{{"duration_time", "0.250000"}};
    EXPECT_EQ(sum_of_packets({{"packets", {packet, packet, packet}}}), 0.75);
}

TEST(SummedLength, IsNotKnownWhereAPacketHasNoLength) {
    const json packet{{"duration_time", "0.250000"}};
    EXPECT_EQ(sum_of_packets({{"packets", {packet, json::object()}}}), std::nullopt);
    EXPECT_EQ(sum_of_packets(json::object()), std::nullopt);
}

}  // namespace
}  // namespace bundle
