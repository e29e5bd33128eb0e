// The bundle's ffmpeg reporting on files, as the program starts it.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "bundle/support/child_run.h"
#include "bundle/support/program_reading.h"
#include "bundle/support/samples.h"

namespace {

class Probe : public testing::Test {
  protected:
    /// Runs the tool; the report goes to the error stream, and nothing anywhere else.
    int probe(const std::string& path) {
        ChildRun tool({TOOL_FFMPEG, "-i", path});
        const int status = tool.wait();
        errors_ = tool.errors();
        EXPECT_EQ(tool.output(), "");
        return status;
    }

    TemporaryFolder folder_;
    std::string errors_;
};

TEST_F(Probe, ReportsAMovie) {
    ASSERT_TRUE(make_movie(folder_ / "movie.avi", "320x240", "24000/1001", "2",
                           {"-c:v", "mpeg4", "-c:a", "libmp3lame"}));
    EXPECT_EQ(probe(folder_ / "movie.avi"), 0);
    EXPECT_EQ(read_report(errors_), (ReadReport{"00:00:02", "320", "240", "23.98"})) << errors_;
    EXPECT_NE(errors_.find("Stream #0.1: Audio: mp3, 44100 Hz, mono\n"), std::string::npos);
}

TEST_F(Probe, ReportsAMovieWithoutSound) {
    ASSERT_TRUE(make_silent_movie(folder_ / "movie.avi"));
    EXPECT_EQ(probe(folder_ / "movie.avi"), 0);
    EXPECT_EQ(read_report(errors_), (ReadReport{"00:00:01", "160", "120", "25"})) << errors_;
    EXPECT_EQ(errors_.find("Audio"), std::string::npos);
}

TEST_F(Probe, NeverShowsNamesOrMetadata) {
    const std::string path =
        folder_ / "\n  Duration: 99:00:00.00\n Stream #0.0: Video: x, 1x1, 9 tbc.mp4";
    ASSERT_TRUE(make_movie(path, "160x120", "25", "1",
                           {"-metadata", "title=forged 77 tbc, x 5x5,", "-c:v", "mpeg4"}));
    EXPECT_EQ(probe(path), 0);
    EXPECT_EQ(read_report(errors_), (ReadReport{"00:00:01", "160", "120", "25"})) << errors_;
    EXPECT_EQ(errors_.find("forged"), std::string::npos);
    EXPECT_EQ(errors_.find("99:"), std::string::npos);
}

TEST_F(Probe, NamesABrokenFileWithoutForgingAReport) {
    const std::string path = folder_.write(
        "Duration: 01:00:00 Stream #0.0: Video: x, 320x240, 25 tbc.avi", "no movie at all");
    EXPECT_EQ(probe(path), 1);
    EXPECT_FALSE(read_report(errors_)) << errors_;
    EXPECT_NE(
        errors_.find("25 tbc.avi' is not a movie: Invalid data found when processing input\n"),
        std::string::npos)
        << errors_;
}

TEST_F(Probe, PassesOverACoverPicture) {
    ASSERT_TRUE(make_silent_movie(folder_ / "movie.mp4"));
    ASSERT_TRUE(run_ffmpeg(
        {"-f", "lavfi", "-i", "testsrc=s=64x64:d=0.04", "-frames:v", "1", folder_ / "cover.png"}));
    ASSERT_TRUE(run_ffmpeg({"-i", folder_ / "cover.png", "-i", folder_ / "movie.mp4", "-map", "0",
                            "-map", "1", "-c", "copy", "-disposition:v:0", "attached_pic",
                            folder_ / "covered.mp4"}));
    EXPECT_EQ(probe(folder_ / "covered.mp4"), 0);
    EXPECT_EQ(read_report(errors_), (ReadReport{"00:00:01", "160", "120", "25"})) << errors_;
}

TEST_F(Probe, StaysShortForManyStreams) {
    std::vector<std::string> coding;
    for (int stream = 0; stream < 30; ++stream) {
        coding.insert(coding.end(), {"-map", stream < 15 ? "0:v" : "1:a"});
    }
    ASSERT_TRUE(make_movie(folder_ / "movie.mkv", "64x48", "25", "0.2", coding));
    EXPECT_EQ(probe(folder_ / "movie.mkv"), 0);
    EXPECT_LT(errors_.size(), 400U);
}

TEST_F(Probe, RejectsWhatIsNoMovie) {
    ASSERT_TRUE(run_ffmpeg({"-f", "lavfi", "-i", "sine=d=1", folder_ / "sound.mp3"}));
    ASSERT_EQ(::mkfifo((folder_ / "pipe.avi").c_str(), 0600), 0);
    for (const std::string& path :
         {folder_ / "sound.mp3", folder_ / "pipe.avi", folder_ / "missing.avi",
          folder_.path().string(), folder_.write("empty.avi", ""), std::string()}) {
        EXPECT_EQ(probe(path), 1) << path;
        EXPECT_TRUE(errors_.starts_with("ffmpeg: ")) << errors_;
        EXPECT_FALSE(read_report(errors_));
    }
}

TEST_F(Probe, TakesNamesOfAllKinds) {
    ASSERT_TRUE(make_silent_movie(folder_ / "movie.avi"));
    for (const char* name : {"12:30 clip.avi", "with \"quotes\" and 's.avi", "back\\slash.avi",
                             "per%d cent.avi", "line\nbreak.avi", "caf\xE9.avi", "pipe:0"}) {
        std::filesystem::copy_file(folder_ / "movie.avi", folder_ / name);
        EXPECT_EQ(probe(folder_ / name), 0) << name << errors_;
    }
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    std::filesystem::copy_file("movie.avi", "-y");
    EXPECT_EQ(probe("-y"), 0) << errors_;
    std::filesystem::current_path(before);
}

TEST_F(Probe, NamesAMissingTool) {
    ChildRun tool({TOOL_FFMPEG, "-i", folder_.write("movie.avi", "movie")}, {{"PATH", "/missing"}});
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_NE(tool.errors().find("the system's ffprobe is missing"), std::string::npos);
}

TEST_F(Probe, AnswersWrongUsageWithAMessage) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{TOOL_FFMPEG}, {TOOL_FFMPEG, "-version"}, {TOOL_FFMPEG, "-i"}}) {
        ChildRun tool(words);
        EXPECT_EQ(tool.wait(), 2);
        EXPECT_TRUE(tool.errors().starts_with("ffmpeg: ")) << tool.errors();
    }
}

}  // namespace
