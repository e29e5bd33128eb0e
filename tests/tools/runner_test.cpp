// The runners with real child processes.

#include <wx/msgdlg.h>
#include <wx/stream.h>
#include <wx/utils.h>

#include <cstring>
#include <memory>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

class Runner : public FrameTest {
  protected:
    void SetUp() override {
        start();
        // The frame treats the job as the one it is probing, and stops at its error.
        job = std::make_unique<Movie>(frame, "", "", 0);
        job->mode = "infos";
        job->infos = "(not called)";
        frame->movies = {job.get()};
        dialogs.answers = {wxID_OK};
    }

    void TearDown() override { frame->movies.clear(); }

    /// Runs a shell script as the tool and returns what the job got at its end.
    template <class Tool>
    wxString end_of(const wxString& script) {
        Tool tool(job.get());
        job->ffmpeg = &tool;
        tool.Run(shell(script));
        EXPECT_GT(tool.GetPid(), 0);
        EXPECT_FALSE(tool.Ended());
        EXPECT_TRUE(wait_until([&] { return tool.Ended(); }));
        EXPECT_EQ(tool.GetPid(), 0);
        return job->infos;
    }

    static wxString shell(const wxString& script) { return "sh -c \"" + script + "\""; }

    std::unique_ptr<Movie> job;
};

/// A stream that always has more to read.
class EndlessStream : public wxInputStream {
  public:
    bool CanRead() const override { return true; }

  protected:
    size_t OnSysRead(void* buffer, size_t size) override {
        std::memset(buffer, 'x', size);
        return size;
    }
};

class Reader : public FFmpeg {
  public:
    using FFmpeg::ReadAvailable;
};

}  // namespace

TEST_F(Runner, PassesOnTheErrorStreamAndOneLineEnd) {
    EXPECT_EQ(end_of<FFmpeg>("echo out; printf 'err 1\\\\nerr 2' >&2"), "err 1\nerr 2\n");
}

TEST_F(Runner, PassesOnTheStandardOutputOfMP4Box) {
    EXPECT_EQ(end_of<MP4Box>("echo err >&2; printf out"), "out\n");
}

TEST_F(Runner, PassesOnNothingForASilentTool) {
    EXPECT_EQ(end_of<FFmpeg>("echo out; exit 3"), "");
}

TEST_F(Runner, PassesOnNothingForASilentMP4Box) {
    EXPECT_EQ(end_of<MP4Box>("echo err >&2"), "");
}

TEST_F(Runner, PassesEveryLineOfAFailureOnToTheConsole) {
    testing::internal::CaptureStderr();
    end_of<FFmpeg>(
        "printf 'ffmpeg: no file\\\\nffmpeg: disk full\\\\nnoise\\\\nffmpeg: end\\\\n' >&2");
    end_of<MP4Box>("printf 'MP4Box: no text\\\\nMP4Box: no cue\\\\n' >&2");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ffmpeg: no file\nffmpeg: disk full\nffmpeg: end\n"
              "MP4Box: no text\nMP4Box: no cue\n");
}

TEST_F(Runner, HidesTheWindowsLanguageFromTheTools) {
    wxString inWindow;
    ASSERT_TRUE(wxGetEnv("LANGUAGE", &inWindow));
    EXPECT_EQ(inWindow, "en");
    EXPECT_EQ(end_of<FFmpeg>("echo ${LANGUAGE-unset} >&2"), "unset\n\n");
}

TEST_F(Runner, PassesOnNothingForAMissingTool) {
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    tool.Run("/no/such/tool -i \"x\"");
    EXPECT_TRUE(wait_until([&] { return tool.Ended(); }));
}

TEST_F(Runner, ReportsToolsThatExitAtOnceThroughTheEventLoopOnly) {
    job->mode = "cancel";
    for (int i = 0; i < 200; ++i) {
        FFmpeg tool(job.get());
        tool.Run("true");
        ASSERT_FALSE(tool.Ended()) << "the end was reported before Run returned";
        ASSERT_TRUE(wait_until([&] { return tool.Ended(); })) << "run " << i;
    }
}

TEST_F(Runner, WidensBytesBeyondAscii) {
    EXPECT_EQ(end_of<FFmpeg>("printf 'a\\\\303\\\\251b' >&2"),
              wxString("a") + wxUniChar(0xFFC3) + wxUniChar(0xFFA9) + "b\n");
}

TEST_F(Runner, MeasuresTheRun) {
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    const wxStopWatch watch;
    tool.Run(shell("read line"));  // waits until its standard input closes
    ASSERT_FALSE(wait_until([&] { return tool.Ended(); }, 0.3));
    tool.CloseOutput();
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
    EXPECT_GE(tool.millis, 300);
    EXPECT_LE(tool.millis, watch.Time());
}

TEST_F(Runner, ReadsEverythingThatIsThereInOneGo) {
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    tool.Run(shell("printf 'time=1.00 bitrate=\\\\rtime=2.00 bitrate=\\\\rtime' >&2; read line"));
    ASSERT_TRUE(wait_until([&] { return tool.IsErrorAvailable(); }));
    EXPECT_EQ(tool.GetLine(), "time=1.00 bitrate=\rtime=2.00 bitrate=\rtime");
    EXPECT_EQ(tool.GetLine(), "");
    tool.CloseOutput();
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
}

TEST_F(Runner, ReadsALimitedPieceOfEndlessOutput) {
    EndlessStream stream;
    EXPECT_EQ(Reader::ReadAvailable(stream).length(), size_t{1} << 20U);
}

TEST_F(Runner, ReportsAPollWithoutNews) {
    job->mode = "convert";
    job->duration = 10;
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    EXPECT_TRUE(tool.RunWithUpdates(shell("read line")));
    ASSERT_TRUE(wait_until([this] { return frame->GetTitle() == "0% - Vantreo"; }, 3.0));
    const long first = tool.millis;
    EXPECT_GE(first, 960);
    ASSERT_TRUE(wait_until([&] { return tool.millis != first; }, 3.0));
    EXPECT_NEAR(static_cast<double>(tool.millis - first), 1000.0, 300.0);
    job->mode = "cancel";
    tool.CloseOutput();
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
}

TEST_F(Runner, PollsTheStandardOutputOfMP4BoxAlone) {
    job->mode = "subtitle";
    MP4Box tool(job.get());
    job->mp4box = &tool;
    tool.RunWithUpdates(
        shell("echo 'ISO File Writing: (99/100)' >&2; echo 'ISO File Writing: (7/100)'; read x"));
    ASSERT_TRUE(wait_until([this] { return frame->GetTitle() != "Vantreo"; }, 3.0));
    EXPECT_EQ(frame->GetTitle(), "7% - Vantreo");
    EXPECT_TRUE(tool.IsErrorAvailable()) << "the error stream is not read";
    job->mode = "cancel";
    tool.CloseOutput();
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
}

TEST_F(Runner, StopsPollingAtTheEnd) {
    job->mode = "convert";
    job->duration = 10;
    job->ffmpeg = nullptr;
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    job->mode = "cancel";
    tool.RunWithUpdates(shell("true"));
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
    const long millis = tool.millis;
    EXPECT_FALSE(wait_until([&] { return tool.millis != millis; }, 1.5));
}

TEST_F(Runner, ClosesThePipesOfAnEndedTool) {
    FFmpeg tool(job.get());
    job->ffmpeg = &tool;
    tool.Run(shell("true"));
    ASSERT_TRUE(wait_until([&] { return tool.Ended(); }));
    EXPECT_EQ(tool.GetErrorStream(), nullptr);
    EXPECT_EQ(tool.GetInputStream(), nullptr);
    EXPECT_EQ(tool.GetOutputStream(), nullptr);
}
