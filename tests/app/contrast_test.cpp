#include "app/contrast.h"

#include <gtest/gtest.h>

namespace {

const wxColour kBlack(0, 0, 0);
const wxColour kWhite(255, 255, 255);
const wxColour kDark(53, 53, 53);
const wxColour kBlue(0, 0, 255);

}  // namespace

TEST(Contrast, MatchesTheGuidelinesExamples) {
    EXPECT_NEAR(contrast(kBlack, kWhite), 21.0, 0.001);
    EXPECT_NEAR(contrast(kWhite, kWhite), 1.0, 0.001);
    EXPECT_NEAR(contrast(wxColour(119, 119, 119), kWhite), 4.48, 0.005);
    EXPECT_NEAR(contrast(kWhite, kBlue), 8.59, 0.005);
}

TEST(Contrast, LeavesAReadableColourAlone) {
    EXPECT_EQ(readable_on(kWhite, kBlue, kBlack), kBlue);
}

TEST(Contrast, MovesAnUnreadableColourOnlyAsFarAsNeeded) {
    const wxColour link = readable_on(kDark, kBlue, kWhite);
    EXPECT_GE(contrast(link, kDark), 4.5);
    EXPECT_LT(contrast(link, kDark), 6.0);
    EXPECT_EQ(link.Blue(), 255);
    EXPECT_LT(link.Red(), 255);
}

TEST(Contrast, FallsBackToTheTextColourIfNothingIsReadable) {
    EXPECT_EQ(readable_on(kDark, kBlue, kBlack), kBlack);
}

TEST(Contrast, ShowsATranslucentColourInFrontOfItsBackground) {
    EXPECT_EQ(opaque_on(kWhite, wxColour(0, 0, 0, 51)), wxColour(204, 204, 204));
    EXPECT_EQ(opaque_on(kWhite, kBlue), kBlue);
}
