#include "mp4/check.h"

#include <gtest/gtest.h>

#include "bundle/support/samples.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

TEST(Shortfall, IsReportedAboveTwoSecondsAndTwoPercent) {
    EXPECT_EQ(
        shortfall(100, 97.9),
        "The movie is truncated or damaged: the MP4 file has 97.9 of 100.0 seconds; 2.1 seconds "
        "(2 %) are missing.");
    EXPECT_NE(shortfall(10, 0), "");
}

TEST(Shortfall, IsNotReportedForLess) {
    EXPECT_EQ(shortfall(10, 8.1), "");
    EXPECT_EQ(shortfall(1000, 981), "");
    EXPECT_EQ(shortfall(10, 30), "");
    EXPECT_EQ(shortfall(0, 30), "");
}

TEST(NearlyNothing, IsLessThanAHundredth) {
    EXPECT_TRUE(is_nearly_nothing(100, 0.9));
    EXPECT_FALSE(is_nearly_nothing(100, 1));
    EXPECT_FALSE(is_nearly_nothing(0, 0));
}

/// Why an MP4 file of which these streams are wanted is refused; empty when it is not.
std::string refusal(const std::string& path, const ExpectedStreams& expected) {
    const auto duration = check_mp4(path, expected);
    return duration ? "" : duration.failure().message;
}

TEST(Mp4Check, RequiresThePictureAndTheStreams) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    const auto duration = check_mp4(folder / "movie.mp4", {false, 1});
    ASSERT_TRUE(duration);
    EXPECT_NEAR(*duration, 1, 0.1);
    EXPECT_EQ(refusal(folder / "movie.mp4", {true, 0}),
              "the MP4 file is incomplete: it has no sound");
    EXPECT_EQ(refusal(folder / "movie.mp4", {false, 2}),
              "the MP4 file is incomplete: it has no subtitles");
    ASSERT_TRUE(run_ffmpeg({"-f", "lavfi", "-i", "sine=d=1", folder / "sound.mp4"}));
    EXPECT_EQ(refusal(folder / "sound.mp4", {true, 0}),
              "the MP4 file is incomplete: it has no picture");
}

TEST(Mp4Check, DoesNotCountChapters) {
    const TemporaryFolder folder;
    const std::string chapters =
        folder.write("chapters", ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1\nSTART=0\nEND=9\n");
    ASSERT_TRUE(run_ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=1", "-i", chapters,
                            "-map", "0", "-map_chapters", "1", folder / "movie.mp4"}));
    const auto duration = check_mp4(folder / "movie.mp4", {});
    ASSERT_TRUE(duration);
    EXPECT_NEAR(*duration, 1, 0.05);
}

TEST(Mp4Check, RequiresACompleteMp4File) {
    const TemporaryFolder folder;
    ASSERT_TRUE(make_movie_with_subtitles(folder / "movie.mp4"));
    const std::string whole = content_of(folder / "movie.mp4");
    for (const std::string& path :
         {folder.write("text.mp4", "no MP4 file"), folder.write("empty.mp4", ""),
          folder / "missing.mp4", folder.write("cut.mp4", whole.substr(0, whole.size() - 1)),
          folder.write("without_index.mp4", whole.substr(0, whole.find("moov") - 4))}) {
        EXPECT_EQ(refusal(path, {}), "the MP4 file is incomplete: it does not open") << path;
    }
}

TEST(Mp4Check, DoesNotCountAnEmptySoundTrack) {
    const TemporaryFolder folder;
    const std::string path = folder / "movie.mp4";
    ASSERT_TRUE(make_movie(path, "160x120", "25", "0.2", {"-c:v", "mpeg4"}));
    ASSERT_EQ(refusal(path, {true, 0}), "");
    std::string bytes = content_of(path);
    // The number of entries in the sound's tables of sizes, chunks and runs.
    for (const auto& [table, count_at] : {std::pair{"stsz", 12U}, {"stco", 8U}, {"stsc", 8U}}) {
        bytes.replace(bytes.find(table, bytes.find("soun")) + count_at, 4, 4, '\0');
    }
    EXPECT_EQ(refusal(folder.write("movie.mp4", bytes), {true, 0}),
              "the MP4 file is incomplete: it has no sound");
}

}  // namespace
}  // namespace bundle
