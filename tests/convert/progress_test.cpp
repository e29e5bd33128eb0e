// From a tool's output to the values in the window.

#include <wx/gauge.h>
#include <wx/stattext.h>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

class Progress : public FrameTest {
  protected:
    void SetUp() override {
        start();
        job = std::make_unique<Movie>(frame, movies.file("a.avi"), out.path(), 0);
        job->duration = 120;
        transcoder = std::make_unique<FFmpeg>(job.get());
        muxer = std::make_unique<MP4Box>(job.get());
        job->ffmpeg = transcoder.get();
        job->mp4box = muxer.get();
    }

    wxString label(const wxStaticText* text) const { return text->GetLabel(); }

    std::unique_ptr<Movie> job;
    std::unique_ptr<FFmpeg> transcoder;
    std::unique_ptr<MP4Box> muxer;
};

}  // namespace

TEST_F(Progress, ComputesThePercentageFromTheTimeWritten) {
    job->mode = "convert";
    transcoder->millis = 10999;
    job->OnFFmpegUpdate("frame= 1 fps=1 q=2.0 size= 1kB time=30.04 bitrate= 1.0kbits/s\r");
    EXPECT_EQ(job->percent, 25);
    EXPECT_EQ(job->percent_exact, 25.0F);
    EXPECT_EQ(job->elapsed, 10);
    EXPECT_EQ(frame->GetTitle(), "25% - Vantreo");
    EXPECT_EQ(label(frame->labelPercent), "25%");
    EXPECT_EQ(label(frame->labelElapsedTime), "00:00:10");
    EXPECT_EQ(label(frame->labelRemainingTime), "00:00:30");
    EXPECT_EQ(frame->gaugeProgress->GetValue(), 25);
}

TEST_F(Progress, KeepsTheFractionOfAPercent) {
    job->mode = "convert";
    job->OnFFmpegUpdate("time=50.99 bitrate=");
    EXPECT_EQ(job->percent, 41);
    EXPECT_FLOAT_EQ(job->percent_exact, 100.0F * 50.0F / 120.0F);
}

TEST_F(Progress, TruncatesTheExactValueAndNotARoundedOne) {
    job->mode = "convert";
    job->duration = 10;
    job->OnFFmpegUpdate("time=7.00 bitrate=");
    EXPECT_EQ(job->percent, 69) << "seven tenths are a little less in single precision";
}

TEST_F(Progress, NeverPassesAHundred) {
    job->mode = "convert";
    job->OnFFmpegUpdate("time=130.00 bitrate=");
    EXPECT_EQ(job->percent, 100);
    EXPECT_EQ(job->percent_exact, 100.0F);
    EXPECT_EQ(frame->GetTitle(), "100% - Vantreo");
}

TEST_F(Progress, KeepsItsFiguresThroughAPollWithoutARecord) {
    job->mode = "convert";
    job->OnFFmpegUpdate("time=60.00 bitrate=");
    transcoder->millis = 7000;
    for (const wxString text : {"", "time=61.00 bitra", "frame= 12 fps=1"}) {
        job->OnFFmpegUpdate(text);
        EXPECT_EQ(job->percent, 50) << text;
        EXPECT_EQ(job->percent_exact, 50.0F) << text;
    }
    EXPECT_EQ(label(frame->labelElapsedTime), "00:00:07");
}

TEST_F(Progress, ShowsTheTitleOfTheExample) {
    job->mode = "convert";
    job->percent = 42;
    job->OnFFmpegUpdate("");
    EXPECT_EQ(frame->GetTitle(), "42% - Vantreo");
}

TEST_F(Progress, ShowsTheMuxersOwnPercentage) {
    job->mode = "subtitle";
    muxer->millis = 2000;
    transcoder->millis = 90000;
    job->OnFFmpegUpdate("ISO File Writing: |====    | (45/100)\r");
    EXPECT_EQ(job->percent, 45);
    EXPECT_EQ(job->percent_exact, 45.0F);
    EXPECT_EQ(job->elapsed, 2);
    EXPECT_EQ(frame->gaugeProgress->GetValue(), 45);
}

TEST_F(Progress, FallsToZeroWhenTheMuxerReportsNothing) {
    job->mode = "subtitle";
    job->OnFFmpegUpdate("ISO File Writing: |====    | (45/100)\r");
    job->OnFFmpegUpdate("");
    EXPECT_EQ(job->percent, 0);
    EXPECT_EQ(label(frame->labelPercent), "0%");
}

TEST_F(Progress, ShowsAMuxersFigureBeyondTheGauge) {
    job->mode = "subtitle";
    job->OnFFmpegUpdate("ISO File Writing: | | (450/1000)\r");
    EXPECT_EQ(label(frame->labelPercent), "450%");
    EXPECT_EQ(frame->gaugeProgress->GetValue(), 100);
}

TEST_F(Progress, IsIgnoredInAnyOtherMode) {
    const wxString title = frame->GetTitle();
    for (const wxString mode : {"", "infos", "cancel"}) {
        job->mode = mode;
        job->OnFFmpegUpdate("time=60.00 bitrate= ISO File Writing: (45/100)");
        EXPECT_EQ(job->percent, 0) << mode;
        EXPECT_EQ(frame->GetTitle(), title) << mode;
    }
}

TEST_F(Progress, UsesTheElapsedTimeOfEachStepsOwnTool) {
    frame->movies = {job.get()};
    transcoder->millis = 11000;
    muxer->millis = 3000;
    job->mp4box_command = "none";
    job->mode = "subtitle";
    job->OnFFmpegTerminate("");
    EXPECT_EQ(job->elapsed, 3);
    EXPECT_EQ(job->percent, 100);
    EXPECT_EQ(label(frame->labelElapsedTime), "00:00:03");
    job->mp4box_command = "";
    job->mode = "convert";
    job->OnFFmpegTerminate("");
    EXPECT_EQ(job->elapsed, 11);
    dialogs.answers = {wxID_OK};
    job->mode = "infos";
    transcoder->millis = 2000;
    job->OnFFmpegTerminate("no movie");
    EXPECT_EQ(job->elapsed, 2);
    EXPECT_EQ(job->infos, "no movie");
    EXPECT_EQ(job->error, "error_badMovies");
    frame->movies.clear();
}

TEST_F(Progress, IgnoresTheEndOfACanceledTool) {
    const wxString title = frame->GetTitle();
    for (const wxString mode : {"cancel", ""}) {
        job->mode = mode;
        job->OnFFmpegTerminate("time=60.00 bitrate=");
        EXPECT_EQ(frame->GetTitle(), title) << mode;
        EXPECT_EQ(job->infos, "") << mode;
    }
}
