// How a job processes its probe's report.

#include <gtest/gtest.h>

#include <filesystem>

#include "convert/Movie.h"
#include "support/folder.h"
#include "support/job_listener.h"

namespace {

namespace fs = std::filesystem;

class MovieProbe : public testing::Test {
  protected:
    /// The report of an ordinary movie with that size, rate and duration.
    static wxString report(const wxString& size = "1280x720", const wxString& rate = "25",
                           const wxString& duration = "00:00:20.00") {
        return wxString::Format(
            "  Duration: %s, start: 0.000000, bitrate: 812 kb/s\n"
            "    Stream #0.0: Video: h264, yuv420p, %s, 25 fps, 25 tbr, 1k tbn, %s tbc\n",
            duration, size, rate);
    }

    static void process(Movie& job, const wxString& infos) {
        job.infos = infos;
        job.InfosProcess();
    }

    JobListener listener;
    Folder movies;
    Folder out;
};

}  // namespace

TEST_F(MovieProbe, StartsWithNothingKnown) {
    const Movie job(listener, "/m/a.avi", "/out", 2);
    EXPECT_EQ(job.path, "/m/a.avi");
    EXPECT_EQ(job.output_dir, "/out");
    EXPECT_EQ(job.optimize, 2);
    EXPECT_EQ(job.mode + job.output_path + job.srt_path + job.error + job.confirm +
                  job.mp4box_command + job.infos + job.ffmpeg_command,
              "");
    EXPECT_EQ(job.percent, 0);
    EXPECT_EQ(job.elapsed, 0);
    EXPECT_EQ(job.ffmpeg, nullptr);
    EXPECT_TRUE(job.Ended());
}

TEST_F(MovieProbe, PreparesTheTranscode) {
    Movie job(listener, movies.file("a.b.avi"), out.path(), 1);
    process(job, report("1280x720", "59.94"));
    EXPECT_EQ(job.error, "");
    EXPECT_EQ(job.duration, 20);
    EXPECT_EQ(job.fps, 59.94);
    EXPECT_EQ(job.fps_max, 30.0);
    EXPECT_EQ(job.output_path, out.file("a.b.mp4"));
    EXPECT_TRUE(
        job.ffmpeg_command.EndsWith(" -r 30000/1001 -s 960x540 \"" + out.file("a.b.mp4") + "\""));
    EXPECT_EQ(job.confirm, "");
}

TEST_F(MovieProbe, UsesTheCodecTimeBaseAsTheRate) {
    Movie job(listener, movies.file("a.avi"), out.path(), 0);
    process(job, report("1280x720", "47.95"));
    EXPECT_EQ(job.fps, 47.95);
    EXPECT_EQ(job.fps_max, 30.0);
}

TEST_F(MovieProbe, RejectsFilesThatAreNotMovies) {
    const wxString bad[] = {"",
                            "x.avi: Invalid data found when processing input\n",
                            report("1280x720", "0"),
                            report("1280x720", "25", "00:00:00.00"),
                            report("0x720"),
                            report("1280x0"),
                            report("100000x10")};
    for (const wxString& infos : bad) {
        Movie job(listener, movies.file("a.avi"), "/no/such/folder", 0);
        process(job, infos);
        EXPECT_EQ(job.error, "error_badMovies") << infos;
        EXPECT_EQ(job.output_path, "") << infos;
    }
}

TEST_F(MovieProbe, RejectsAFolderThatDoesNotExist) {
    for (const wxString& folder : {out.file("none"), wxString(), out.write("file")}) {
        Movie job(listener, movies.file("a.avi"), folder, 0);
        process(job, report());
        EXPECT_EQ(job.error, "error_badOutput") << folder;
        EXPECT_EQ(job.ffmpeg_command, "") << folder;
    }
}

TEST_F(MovieProbe, RejectsARelativeFolderEvenIfItExists) {
    fs::create_directories((out.path() + "/~/inside").utf8_string());
    fs::current_path(out.path().utf8_string());
    for (const wxString folder : {".", "~", "~/inside", "./~"}) {
        Movie job(listener, movies.file("a.avi"), folder, 0);
        process(job, report());
        EXPECT_EQ(job.error, "error_badOutput") << folder;
    }
    fs::current_path("/");
}

TEST_F(MovieProbe, RefusesToConvertAMovieOntoItself) {
    Movie same(listener, movies.write("a.mp4"), movies.path(), 0);
    process(same, report());
    EXPECT_EQ(same.error, "error_MoviesOutputSame");
    EXPECT_EQ(same.confirm, "");

    for (const wxString name : {"b.avi", "c.MP4"}) {
        Movie other(listener, movies.file(name), movies.path(), 0);
        process(other, report());
        EXPECT_EQ(other.error, "") << name;
    }
}

TEST_F(MovieProbe, AsksBeforeReplacingAnExistingFile) {
    out.write("a.mp4");
    Movie job(listener, movies.file("a.avi"), out.path(), 0);
    process(job, report());
    EXPECT_EQ(job.confirm, "confirmOverwrite");
    EXPECT_EQ(job.error, "");
    EXPECT_NE(job.ffmpeg_command, "");
}

TEST_F(MovieProbe, FindsTheSubtitlesBesideTheMovie) {
    const wxString srt = movies.write("movie.srt");
    Movie job(listener, movies.file("movie.avi"), out.path(), 0);
    process(job, report());
    EXPECT_EQ(job.srt_path, srt);
    EXPECT_EQ(job.mp4box_command, "Vantreo.app/Contents/Resources/MP4Box -add \"" + srt +
                                      ":hdlr=sbtl\" \"" + out.file("movie.mp4") + "\"");
}

TEST_F(MovieProbe, IgnoresSubtitlesOfAnotherName) {
    movies.write("other.srt");
    movies.write("movie.SRT");  // found only if the file system ignores case
    out.write("movie.srt");
    Movie job(listener, movies.file("movie.avi"), out.path(), 0);
    process(job, report());
#ifdef __linux__
    EXPECT_EQ(job.srt_path, "");
    EXPECT_EQ(job.mp4box_command, "");
#endif
}

TEST_F(MovieProbe, KeepsAnErrorThatTheToolCheckFound) {
    Movie job(listener, movies.file("a.avi"), out.path(), 0);
    job.error = "error_mp4box";
    process(job, report());
    EXPECT_EQ(job.error, "error_mp4box");
    EXPECT_EQ(job.ffmpeg_command, "");
}
