#include "ffmpeg/picture_gaps.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(PictureGaps, AreReportedWhereAThirdOfTheFramesIsMissing) {
    EXPECT_EQ(picture_gaps({200, 50}, 25),
              "The movie is damaged: 6.0 of 8.0 seconds of its picture (75 %) cannot be read; the "
              "picture stands still there.");
    EXPECT_NE(picture_gaps({300, 199}, 25), "");
}

TEST(PictureGaps, AreNotReportedForFewOrRepeatedFrames) {
    EXPECT_EQ(picture_gaps({300, 201}, 25), "");
    EXPECT_EQ(picture_gaps({300, 225}, 30), "");
    EXPECT_EQ(picture_gaps({60, 10}, 25), "");
    EXPECT_EQ(picture_gaps({200, 400}, 25), "");
}

TEST(PictureGaps, AreNotReportedWhereTheFramesAreNotKnown) {
    EXPECT_EQ(picture_gaps({0, 10}, 25), "");
    EXPECT_EQ(picture_gaps({200, 0}, 0), "");
}

TEST(OtherErrors, AreThoseThatAreNotAboutTheAudio) {
    const std::string audio =
        "[mp3float @ 0x55d1] Header missing\n"
        "    Last message repeated 3 times\n"
        "[aist#0:1/mp3 @ 0x55d1] Error submitting packet\n"
        "Error while decoding stream #0:1: Invalid data found when processing input\n";
    EXPECT_FALSE(has_other_errors("", 1, "mp3"));
    EXPECT_FALSE(has_other_errors(audio, 1, "mp3"));
    EXPECT_TRUE(has_other_errors(audio + "[matroska,webm @ 0x55d1] Invalid track", 1, "mp3"));
    EXPECT_TRUE(has_other_errors("Error while decoding stream #0:0: Invalid data", 1, "mp3"));
    EXPECT_TRUE(has_other_errors("Error while decoding stream #0:10: Invalid data", 1, "mp3"));
}

}  // namespace
}  // namespace bundle
