#include "colour.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

const Colour kHd{"tv", "bt709", "bt709", "bt709"};
const Colour kSd{"tv", "smpte170m", "smpte170m", "smpte170m"};
const Colour kPq{"tv", "bt2020nc", "bt2020", "smpte2084"};
const Colour kHlg{"tv", "bt2020nc", "bt2020", "arib-std-b67"};
const Colour kRgb{"pc", "gbr", "bt709", "bt709"};

TEST(Colour, IsAssumedByTheSizeWhereTheFileIsSilent) {
    EXPECT_EQ(assumed_colour({}, "yuv420p", {1280, 720}), kHd);
    EXPECT_EQ(assumed_colour({}, "yuv420p", {640, 480}), kSd);
    EXPECT_EQ(assumed_colour({}, "yuv420p", {720, 576}),
              (Colour{"tv", "bt470bg", "bt470bg", "smpte170m"}));
}

TEST(Colour, IsWhatTheFileTells) {
    EXPECT_EQ(assumed_colour(kSd, "yuv420p", {1920, 1080}), kSd);
    EXPECT_EQ(assumed_colour({"pc", "bt709", "", ""}, "yuv420p", {1920, 1080}),
              (Colour{"pc", "bt709", "bt709", "bt709"}));
    EXPECT_EQ(assumed_colour({"", "", "", "smpte2084"}, "yuv420p10le", {640, 360}), kPq);
}

TEST(Colour, HasTheFullRangeInOldJpegFormatsAndInRgb) {
    EXPECT_EQ(assumed_colour({}, "yuvj420p", {640, 480}).range, "pc");
    EXPECT_EQ(assumed_colour({}, "bgr0", {640, 480}), kRgb);
    EXPECT_EQ(assumed_colour({}, "pal8", {640, 480}), kRgb);
}

TEST(Colour, StaysWhatItIsInOrdinaryFilms) {
    for (const Colour& colour : {kHd, kSd}) {
        const ColourPlan plan = colour_plan(colour, {480, 270}, true);
        EXPECT_EQ(plan.filters, "scale=480:270:out_range=tv");
        EXPECT_EQ(plan.result, colour);
    }
}

TEST(Colour, EndsInTheLimitedRange) {
    EXPECT_EQ(colour_plan({"pc", "bt709", "bt709", "bt709"}, {480, 270}, true).result, kHd);
}

TEST(Colour, BecomesBt709FromRgb) {
    const ColourPlan plan = colour_plan(kRgb, {480, 270}, true);
    EXPECT_EQ(plan.filters, "scale=480:270:out_range=tv:out_color_matrix=bt709");
    EXPECT_EQ(plan.result, kHd);
}

TEST(Colour, IsToneMappedFromHighDynamicRange) {
    for (const Colour& colour : {kPq, kHlg}) {
        const ColourPlan plan = colour_plan(colour, {480, 270}, true);
        EXPECT_TRUE(plan.filters.starts_with(
            "scale=480:270,zscale=rin=tv:min=bt2020nc:pin=bt2020:tin=" + colour.transfer +
            ":t=linear"))
            << plan.filters;
        EXPECT_NE(plan.filters.find(",tonemap="), std::string::npos);
        EXPECT_EQ(plan.result, kHd);
    }
}

TEST(Colour, IsConvertedWithoutToneMappingFromAWideGamut) {
    const ColourPlan plan =
        colour_plan({"tv", "bt2020nc", "bt2020", "bt2020-10"}, {480, 270}, true);
    EXPECT_EQ(plan.filters,
              "scale=480:270,zscale=rin=tv:min=bt2020nc:pin=bt2020:tin=bt2020-10:"
              "m=bt709:p=bt709:t=bt709:r=tv");
    EXPECT_EQ(plan.result, kHd);
}

TEST(Colour, KeepsItsTrueNamesWhereTheFiltersAreMissing) {
    const ColourPlan plan = colour_plan(kPq, {480, 270}, false);
    EXPECT_EQ(plan.filters, "scale=480:270:out_range=tv");
    EXPECT_EQ(plan.result, kPq);
}

TEST(Colour, NeedsConversionOnlyOutsideTheOrdinary) {
    EXPECT_FALSE(needs_colour_conversion({}));
    EXPECT_FALSE(needs_colour_conversion(kHd));
    EXPECT_FALSE(needs_colour_conversion(kRgb));
    EXPECT_TRUE(needs_colour_conversion(kHlg));
    EXPECT_TRUE(needs_colour_conversion({"", "", "bt2020", ""}));
    EXPECT_TRUE(needs_colour_conversion({"tv", "smpte240m", "smpte240m", "smpte240m"}));
}

}  // namespace
}  // namespace bundle
