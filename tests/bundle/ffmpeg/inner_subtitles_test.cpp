#include "ffmpeg/inner_subtitles.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include "bundle/support/samples.h"
#include "mp4/check.h"
#include "subtitles/styled_text.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

std::string line(const std::string& times, const std::string& text) {
    return "Dialogue: 0," + times + ",Default,,0,0,0,," + text + "\n";
}

const TextStream kStream{3, "subrip", "deu", "", true, true};

/// What adding them to an MP4 file says, which has to succeed.
std::string add_subtitles_to(const std::string& path) {
    const InnerSubtitles subtitles({kStream}, "movie.mkv");
    const std::string script = line("0:00:00.10,0:00:00.50", "a");
    EXPECT_EQ(::pwrite(subtitles.scripts().at(0), script.data(), script.size(), 0),
              static_cast<ssize_t>(script.size()));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(subtitles.add_to(path, 1));
    return testing::internal::GetCapturedStderr();
}

TEST(InnerSubtitles, AreAddedToTheMp4File) {
    const TemporaryFolder folder;
    const std::string path = folder / "out.mp4";
    ASSERT_TRUE(make_silent_movie(path));
    EXPECT_EQ(add_subtitles_to(path), "");
    EXPECT_TRUE(check_mp4(path, {false, 1}));
}

TEST(InnerSubtitles, LeaveAnMp4FileOfAnotherLayoutAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder / "out.mp4";
    ASSERT_TRUE(make_silent_movie(path));
    // The samples reach to the end of the file, wherever that is.
    const std::string behind = content_of(path) + std::string("\0\0\0\0mdat", 8) + "samples";
    const std::string other = folder.write("other.mp4", behind);
    EXPECT_NE(add_subtitles_to(other).find("the subtitles inside it are left out: "),
              std::string::npos);
    EXPECT_EQ(content_of(other), behind);
    EXPECT_TRUE(check_mp4(other, {}));
}

TEST(InnerSubtitles, LeaveAnIndexThatTakesNoTracksAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder / "out.mp4";
    ASSERT_TRUE(make_silent_movie(path));
    std::string movie = content_of(path);
    movie.replace(movie.find("vide"), 4, "pict");
    folder.write("out.mp4", movie);
    EXPECT_NE(add_subtitles_to(path).find("can't take subtitles"), std::string::npos);
    EXPECT_EQ(content_of(path), movie);
}

TEST(InnerSubtitles, BecomeATrackWithWhatIsKnownAboutThem) {
    const TextTrack track = track_of(kStream, line("0:00:01.00,0:00:02.00", "a"), 5);
    EXPECT_EQ(track.cues, (std::vector<Cue>{{1000, 2000, "a"}}));
    EXPECT_EQ(track.language, "deu");
    EXPECT_EQ(track.name, "SubtitleHandler");
    EXPECT_TRUE(track.is_enabled);
    EXPECT_TRUE(track.is_forced);
}

TEST(InnerSubtitles, GiveTheirTitleToTheTrack) {
    EXPECT_EQ(track_of({3, "ass", "deu", "Schilder", false, false}, "", 5).name, "Schilder");
    EXPECT_EQ(track_of({3, "ass", "deu", "Vantreo subtitles", false, false}, "", 5).name,
              "SubtitleHandler");
}

TEST(InnerSubtitles, StayWithinTheMovie) {
    const std::string script =
        line("0:00:00.-50,0:00:00.50", "before") + line("0:00:-2.00,0:00:-1.00", "gone") +
        line("0:00:04.00,0:00:09.00", "over the end") +
        line("0:00:05.00,0:00:06.00", "at the end") + line("1:00:00.00,1:00:01.00", "far") +
        line("0:00:04.99,0:00:04.99", "without length");
    EXPECT_EQ(
        track_of(kStream, script, 5.004).cues,
        (std::vector<Cue>{
            {0, 500, "before"}, {4000, 4990, "over the end"}, {4990, 5000, "without length"}}));
}

TEST(InnerSubtitles, HaveNoTrackWithoutCues) {
    EXPECT_TRUE(track_of(kStream, "[Events]\n", 5).cues.empty());
    EXPECT_TRUE(track_of(kStream, line("0:00:01.00,0:00:02.00", "{\\an8}"), 5).cues.empty());
}

TEST(InnerSubtitles, ThatMoveAreOneCue) {
    const std::string script = line("0:00:01.00,0:00:01.04", "{\\pos(1,1)}a") +
                               line("0:00:01.04,0:00:01.08", "{\\pos(2,1)}a") +
                               line("0:00:01.08,0:00:01.12", "{\\pos(3,1)}a");
    EXPECT_EQ(track_of(kStream, script, 5).cues, (std::vector<Cue>{{1000, 1120, "a"}}));
}

TEST(InnerSubtitles, LeaveTheProgressToTheFrames) {
    Progress progress;
    progress.frames = 50;
    progress.microseconds = 36'000'000'000;
    EXPECT_EQ(timed_by_frames(progress, 25).microseconds, 2'000'000);
    EXPECT_EQ(timed_by_frames(progress, 0).microseconds, 36'000'000'000);
}

}  // namespace
}  // namespace bundle
