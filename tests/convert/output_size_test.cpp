#include "convert/output_size.h"

#include <gtest/gtest.h>

#include <ostream>

bool operator==(FrameSize a, FrameSize b) {
    return a.width == b.width && a.height == b.height;
}

void PrintTo(FrameSize size, std::ostream* out) {
    *out << size.width << "x" << size.height;
}

TEST(OutputSize, LimitsTheLongerSideToTheDevice) {
    EXPECT_EQ(output_size({1280, 720}, 0), (FrameSize{480, 270}));
    EXPECT_EQ(output_size({1280, 720}, 1), (FrameSize{960, 540}));
    EXPECT_EQ(output_size({1280, 720}, 2), (FrameSize{1024, 576}));
}

TEST(OutputSize, MakesTheComputedSideEven) {
    EXPECT_EQ(output_size({720, 404}, 0), (FrameSize{480, 268}));
}

TEST(OutputSize, ComputesInSinglePrecision) {
    EXPECT_EQ(output_size({486, 405}, 0), (FrameSize{480, 398}));
}

TEST(OutputSize, KeepsAnOddSizedSmallMovieAsItIs) {
    for (int device = 0; device <= 2; ++device) {
        EXPECT_EQ(output_size({320, 240}, device), (FrameSize{320, 240}));
        EXPECT_EQ(output_size({321, 241}, device), (FrameSize{321, 241}));
        EXPECT_EQ(output_size({241, 321}, device), (FrameSize{241, 321}));
    }
}

TEST(OutputSize, LimitsTheHeightOfAPortraitMovie) {
    EXPECT_EQ(output_size({480, 640}, 0), (FrameSize{360, 480}));
    EXPECT_EQ(output_size({720, 1280}, 2), (FrameSize{576, 1024}));
}

TEST(OutputSize, TreatsASquareMovieLikeAPortraitOne) {
    EXPECT_EQ(output_size({1000, 1000}, 0), (FrameSize{480, 480}));
    EXPECT_EQ(output_size({480, 480}, 0), (FrameSize{480, 480}));
}

TEST(OutputSize, TreatsAnUnknownDeviceAsTheFirst) {
    EXPECT_EQ(output_size({1280, 720}, 5), (FrameSize{480, 270}));
    EXPECT_EQ(output_size({1280, 720}, -1), (FrameSize{480, 270}));
}

TEST(OutputSize, KeepsAMovieThatIsExactlyAsWideAsTheLimit) {
    EXPECT_EQ(output_size({480, 271}, 0), (FrameSize{480, 271}));
    EXPECT_EQ(output_size({481, 271}, 0), (FrameSize{480, 270}));
}

TEST(OutputSize, GivesNoHeightForAnExtremelyFlatMovie) {
    EXPECT_EQ(output_size({10000, 10}, 0), (FrameSize{480, 0}));
}
