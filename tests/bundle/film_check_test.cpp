#include "film_check.h"

#include <gtest/gtest.h>

#include "samples.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

TEST(Shortfall, IsToldAboveTwoSecondsAndTwoPercent) {
    EXPECT_EQ(shortfall(100, 97.9),
              "The source breaks off: the film holds 97.9 of 100.0 seconds, 2.1 seconds (2 %) are "
              "missing.");
    EXPECT_NE(shortfall(10, 0), "");
}

TEST(Shortfall, IsNotToldForLess) {
    EXPECT_EQ(shortfall(10, 8.1), "");
    EXPECT_EQ(shortfall(1000, 981), "");
    EXPECT_EQ(shortfall(10, 30), "");
    EXPECT_EQ(shortfall(0, 30), "");
}

TEST(FilmCheck, WantsThePictureAndTheStreams) {
    const TemporaryFolder folder;
    const StopSignals stop({});
    ASSERT_TRUE(make_film_with_subtitles(folder / "film.mp4"));
    const auto duration = check_film(folder / "film.mp4", {false, 1}, stop);
    ASSERT_TRUE(duration);
    EXPECT_NEAR(*duration, 1, 0.1);
    EXPECT_FALSE(check_film(folder / "film.mp4", {true, 0}, stop));
    EXPECT_FALSE(check_film(folder / "film.mp4", {false, 2}, stop));
    ASSERT_TRUE(run_ffmpeg({"-f", "lavfi", "-i", "sine=d=1", folder / "sound.mp4"}));
    EXPECT_FALSE(check_film(folder / "sound.mp4", {true, 0}, stop));
    EXPECT_FALSE(check_film(folder.write("text.mp4", "no film"), {}, stop));
}

}  // namespace
}  // namespace bundle
