#include "core/numbers.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(Numbers, ReadOnlyWholeTexts) {
    EXPECT_EQ(parse_integer("-17"), -17);
    EXPECT_EQ(parse_integer("17 "), std::nullopt);
    EXPECT_EQ(parse_integer(""), std::nullopt);
    EXPECT_EQ(parse_integer("99999999999999999999"), std::nullopt);
    EXPECT_EQ(parse_decimal("2.5"), 2.5);
    EXPECT_EQ(parse_decimal("2.5s"), std::nullopt);
    EXPECT_EQ(parse_decimal("N/A"), std::nullopt);
    EXPECT_EQ(parse_decimal("nan"), std::nullopt);
}

TEST(Numbers, ReadFractionsAboveZero) {
    EXPECT_EQ(parse_rational("30000/1001"), (Rational{30000, 1001}));
    EXPECT_EQ(parse_rational("25"), (Rational{25, 1}));
    EXPECT_EQ(parse_rational("64:45", ':'), (Rational{64, 45}));
    EXPECT_EQ(parse_rational("0/0"), std::nullopt);
    EXPECT_EQ(parse_rational("1/0"), std::nullopt);
    EXPECT_EQ(parse_rational("-25/1"), std::nullopt);
    EXPECT_EQ(parse_rational("25/"), std::nullopt);
}

TEST(Numbers, AreWrittenWithAtMostTwoDecimals) {
    EXPECT_EQ(two_decimals(24000.0 / 1001), "23.98");
    EXPECT_EQ(two_decimals(30000.0 / 1001), "29.97");
    EXPECT_EQ(two_decimals(12.5), "12.5");
    EXPECT_EQ(two_decimals(100), "100");
    EXPECT_EQ(two_decimals(0), "0");
}

}  // namespace
}  // namespace bundle
