#include "movie/colour.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

const Colour kHd{"tv", "bt709", "bt709", "bt709"};
const Colour kSd{"tv", "smpte170m", "smpte170m", "smpte170m"};
const Colour kPq{"tv", "bt2020nc", "bt2020", "smpte2084"};
const Colour kHlg{"tv", "bt2020nc", "bt2020", "arib-std-b67"};
const Colour kRgb{"pc", "gbr", "bt709", "bt709"};

/// As for an ffmpeg that has all filters.
ColourPlan plan_of(const Colour& colour) {
    return colour_plan(colour, {480, 270}, needs_colour_conversion(colour));
}

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

TEST(Colour, IsNotThatOfRgbWhereThePixelsAreNot) {
    EXPECT_EQ(assumed_colour({"", "gbr", "", ""}, "yuv420p", {1280, 720}), kHd);
    EXPECT_EQ(assumed_colour({"", "gbr", "", "smpte2084"}, "yuv420p10le", {1280, 720}), kPq);
}

TEST(Colour, IsWideInRgbOfHighDynamicRange) {
    EXPECT_EQ(assumed_colour({"", "", "", "smpte2084"}, "gbrp10le", {1280, 720}),
              (Colour{"pc", "gbr", "bt2020", "smpte2084"}));
}

TEST(Colour, StaysWhatItIsInOrdinaryMovies) {
    for (const Colour& colour : {kHd, kSd}) {
        const ColourPlan plan = plan_of(colour);
        EXPECT_EQ(plan.filters, "scale=480:270:out_range=tv");
        EXPECT_EQ(plan.result, colour);
    }
}

TEST(Colour, EndsInTheLimitedRange) {
    EXPECT_EQ(plan_of({"pc", "bt709", "bt709", "bt709"}).result, kHd);
}

TEST(Colour, BecomesBt709FromRgb) {
    const ColourPlan plan = plan_of(kRgb);
    EXPECT_EQ(plan.filters, "scale=480:270:out_range=tv:out_color_matrix=bt709");
    EXPECT_EQ(plan.result, kHd);
}

TEST(Colour, IsToneMappedFromHighDynamicRange) {
    for (const Colour& colour : {kPq, kHlg}) {
        const ColourPlan plan = plan_of(colour);
        EXPECT_TRUE(plan.filters.starts_with(
            "scale=480:270,setparams=range=tv:color_primaries=bt2020:color_trc=" + colour.transfer +
            ":colorspace=bt2020nc,zscale=t=linear"))
            << plan.filters;
        EXPECT_NE(plan.filters.find(",tonemap="), std::string::npos);
        EXPECT_EQ(plan.result, kHd);
    }
}

TEST(Colour, IsConvertedWithoutToneMappingFromAWideGamut) {
    const ColourPlan plan = plan_of({"tv", "bt2020nc", "bt2020", "bt2020-10"});
    EXPECT_EQ(plan.filters,
              "scale=480:270,setparams=range=tv:color_primaries=bt2020:color_trc=bt2020-10:"
              "colorspace=bt2020nc,zscale=m=bt709:p=bt709:t=bt709:r=tv");
    EXPECT_EQ(plan.result, kHd);
}

std::string names_that_go_in(const Colour& colour) {
    const std::string filters = plan_of(colour).filters;
    const std::size_t start = filters.find("setparams=");
    return filters.substr(start, filters.find(',', start) - start);
}

TEST(Colour, IsConvertedFromTheUsualNamesWhereItsOwnLeadNowhere) {
    EXPECT_EQ(names_that_go_in({"tv", "bt2020c", "bt2020", "smpte2084"}), setparams(kPq));
    EXPECT_EQ(names_that_go_in({"tv", "bt2020nc", "smpte428", "bt1361e"}),
              setparams({"tv", "bt2020nc", "bt709", "bt709"}));
    EXPECT_EQ(names_that_go_in({"tv", "smpte2085", "bt709", "bt709"}), setparams(kHd));
    EXPECT_EQ(names_that_go_in({"tv", "ictcp", "bt709", "bt709"}), setparams(kHd));
}

TEST(Colour, IsConvertedFromItsOwnNamesWhereTheyLeadSomewhere) {
    for (const Colour& colour : {Colour{"tv", "ictcp", "bt2020", "smpte2084"},
                                 Colour{"tv", "bt2020c", "bt2020", "bt2020-10"},
                                 Colour{"tv", "smpte240m", "smpte240m", "smpte240m"}}) {
        EXPECT_EQ(names_that_go_in(colour), setparams(colour));
    }
}

TEST(Colour, IsConvertedFromPlanesInRgb) {
    const Colour colour{"pc", "gbr", "bt2020", "smpte2084"};
    const ColourPlan plan = plan_of(colour);
    EXPECT_TRUE(plan.filters.starts_with("scale=480:270,format=gbrp16le," + setparams(colour)))
        << plan.filters;
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
    EXPECT_TRUE(needs_colour_conversion({"", "", "ebu3213", ""}));
    EXPECT_TRUE(needs_colour_conversion({"tv", "smpte240m", "smpte240m", "smpte240m"}));
}

}  // namespace
}  // namespace bundle
