#include "movie/picture_geometry.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(PictureGeometry, IsInSquarePixels) {
    EXPECT_EQ(shown_size({720, 576}, Rational{64, 45}, 0), (Size{1024, 576}));
    EXPECT_EQ(shown_size({720, 480}, Rational{8, 9}, 0), (Size{640, 480}));
    EXPECT_EQ(shown_size({720, 480}, std::nullopt, 0), (Size{720, 480}));
}

TEST(PictureGeometry, IsUprightAfterAQuarterTurn) {
    for (const double rotation : {90.0, -90.0, 270.0, 89.9, 450.0}) {
        EXPECT_EQ(shown_size({1920, 1080}, std::nullopt, rotation), (Size{1080, 1920})) << rotation;
    }
    EXPECT_EQ(shown_size({720, 576}, Rational{64, 45}, -90), (Size{576, 1024}));
}

TEST(PictureGeometry, KeepsItsSidesAfterAnyOtherTurn) {
    for (const double rotation : {0.0, 180.0, -180.0, 45.0, 3.0}) {
        EXPECT_EQ(shown_size({1920, 1080}, std::nullopt, rotation), (Size{1920, 1080})) << rotation;
    }
}

TEST(PictureGeometry, DisbelievesAnAbsurdPixelShape) {
    EXPECT_EQ(shown_size({720, 576}, Rational{1, 5000}, 0), (Size{720, 576}));
    EXPECT_EQ(shown_size({720, 576}, Rational{5000, 1}, 0), (Size{720, 576}));
}

TEST(PictureGeometry, HasEvenSidesBelowOddOnes) {
    EXPECT_EQ(even({321, 241}), (Size{320, 240}));
    EXPECT_EQ(even({320, 240}), (Size{320, 240}));
    EXPECT_EQ(even({320, 1}), (Size{320, 2}));
    EXPECT_EQ(even({0, 240}), (Size{2, 240}));
}

}  // namespace
}  // namespace bundle
