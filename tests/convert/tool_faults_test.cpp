// Misbehaving tools: the window stays responsive and shows the state of the run.

#include <signal.h>
#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/listbox.h>
#include <wx/stattext.h>

#include <algorithm>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

const wxString kConverting = "Conversion in progress...";
const wxString kCompleted = "Conversion completed!";
const wxString kCanceled = "Conversion canceled";
const wxString kHalf =
    "frame=   1 fps=  1 q=2.0 size=       1kB time=60.00 bitrate=   1.0kbits/s\r";

/// More than a pipe can hold; a probe's report is read only at its end, which never comes.
const wxString kEndless('x', std::size_t{1} << 20U);

class ToolFaults : public FrameTest {
  protected:
    void flood(const wxString& tool = "ffmpeg") { doubles.write("flood" + tool); }
    void stop_flood(const wxString& tool = "ffmpeg") { doubles.remove("flood" + tool); }

    /// The longest iteration of the event loop within `seconds`, in milliseconds.
    static long longest_turn(double seconds) {
        wxStopWatch turn;
        long longest = 0;
        wait_until(
            [&] {
                longest = std::max(longest, turn.Time());
                turn.Start();
                return false;
            },
            seconds);
        return longest;
    }

    void expect_alive() { EXPECT_LT(longest_turn(2.5), 1000); }

    bool percent_shown(const wxString& text) {
        return wait_until([&] { return frame->labelPercent->GetLabel() == text; });
    }

    bool ends_with(const wxString& state) {
        return wait_until([&] { return status() == state && !running(); }, 15.0);
    }

    /// A confirmed cancel ends the tool and starts no other.
    void expect_cancel() {
        const Movie* const job = frame->movies[frame->movieIndex];
        const size_t before = steps().size();
        dialogs.answers.push_back(wxID_YES);
        press(frame->buttonConvert);
        EXPECT_EQ(status(), kCanceled);
        EXPECT_FALSE(running());
        EXPECT_TRUE(wait_until([&] { return job->Ended(); }));
        run_pending_events();
        EXPECT_EQ(status(), kCanceled);
        EXPECT_EQ(steps().size(), before);
    }

    /// The first movie's subtitle step, held.
    void start_mux() {
        movies.write("a.srt");
        hold("MP4Box");
        add({"a.avi"});
        press(frame->buttonConvert);
        ASSERT_TRUE(wait_for_steps(3));
    }
};

}  // namespace

TEST_F(ToolFaults, AFloodOfProgressKeepsTheWindowAlive) {
    start();
    convert_prints(kHalf);
    flood();
    start_run({"a.avi"});
    EXPECT_TRUE(percent_shown("50%"));
    expect_alive();
    EXPECT_EQ(frame->gaugeProgress->GetValue(), 50);
    EXPECT_EQ(status(), kConverting);
    stop_flood();
    release();
    EXPECT_TRUE(ends_with(kCompleted));
    EXPECT_EQ(frame->GetTitle(), "100% - Vantreo");
}

TEST_F(ToolFaults, AFloodOfGarbageIsCanceled) {
    start();
    convert_prints(wxString('x', 5000));
    flood();
    start_run({"a.avi"});
    expect_alive();
    EXPECT_EQ(frame->labelPercent->GetLabel(), "0%");
    expect_cancel();
}

TEST_F(ToolFaults, AFloodOfTheMuxerKeepsTheWindowAlive) {
    start();
    doubles.write("mux", "ISO File Writing: |==   | (45/100)\r");
    flood("MP4Box");
    start_mux();
    EXPECT_TRUE(percent_shown("45%"));
    expect_alive();
    stop_flood("MP4Box");
    release("MP4Box");
    EXPECT_TRUE(ends_with(kCompleted));
}

TEST_F(ToolFaults, AProbeWhoseReportNeverEndsIsCanceled) {
    start();
    report(kEndless);
    add({"a.avi"});
    press(frame->buttonConvert);
    expect_alive();
    EXPECT_EQ(status(), kConverting);
    expect_cancel();
}

TEST_F(ToolFaults, ASilentToolThatNeverEndsShowsTheTimeAndIsCanceled) {
    start();
    start_run({"a.avi"});
    EXPECT_TRUE(
        wait_until([this] { return frame->labelElapsedTime->GetLabel() == "00:00:02"; }, 10.0));
    EXPECT_EQ(frame->labelPercent->GetLabel(), "0%");
    EXPECT_EQ(frame->labelRemainingTime->GetLabel(), "??:??:??");
    EXPECT_EQ(frame->GetTitle(), "0% - Vantreo");
    expect_cancel();
}

TEST_F(ToolFaults, ToolsThatEndBeforeTheFirstTickAreDone) {
    start();
    movies.write("a.srt");
    add({"a.avi"});
    press(frame->buttonConvert);
    EXPECT_TRUE(ends_with(kCompleted));
    EXPECT_EQ(frame->labelPercent->GetLabel(), "100%");
    EXPECT_EQ(frame->labelElapsedTime->GetLabel(), "00:00:00");
    EXPECT_EQ(steps().size(), 3U);
}

TEST_F(ToolFaults, AToolThatClosesItsStreamsIsWaitedFor) {
    start();
    convert_prints(kHalf);
    doubles.write("close");
    start_run({"a.avi"});
    EXPECT_TRUE(percent_shown("50%"));
    expect_alive();
    EXPECT_TRUE(running());
    EXPECT_EQ(frame->labelPercent->GetLabel(), "50%") << "the last value stays";
    release();
    EXPECT_TRUE(ends_with(kCompleted));
}

TEST_F(ToolFaults, AMuxerThatClosesItsStreamsIsWaitedFor) {
    start();
    doubles.write("mux", "ISO File Writing: |==   | (45/100)\r");
    doubles.write("close");
    start_mux();
    expect_alive();
    EXPECT_TRUE(running());
    EXPECT_EQ(frame->labelPercent->GetLabel(), "0%") << "a poll without news";
    release("MP4Box");
    EXPECT_TRUE(ends_with(kCompleted));
}

TEST_F(ToolFaults, AToolThatIsKilledCountsAsDone) {
    start();
    for (const int signal : {SIGTERM, SIGKILL}) {
        const size_t before = steps().size();
        hold();
        add({"a.avi", "b.avi"});
        press(frame->buttonConvert);
        ASSERT_TRUE(wait_for_steps(before + 3));
        ASSERT_EQ(::kill(static_cast<pid_t>(frame->movies[0]->ffmpeg->GetPid()), signal), 0);
        EXPECT_TRUE(wait_for_steps(before + 4)) << "the next movie follows";
        release();
        EXPECT_TRUE(ends_with(kCompleted));
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(ToolFaults, AMuxerThatIsKilledCountsAsDone) {
    start();
    start_mux();
    ASSERT_EQ(::kill(static_cast<pid_t>(frame->movies[0]->mp4box->GetPid()), SIGKILL), 0);
    EXPECT_TRUE(ends_with(kCompleted));
    EXPECT_EQ(frame->labelPercent->GetLabel(), "100%");
}

TEST_F(ToolFaults, AKilledProbeCountsAsNoMovie) {
    start();
    report(kEndless);
    dialogs.answers = {wxID_OK};
    add({"a.avi"});
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_for_steps(1));
    ASSERT_EQ(::kill(static_cast<pid_t>(frame->movies[0]->ffmpeg->GetPid()), SIGKILL), 0);
    EXPECT_TRUE(ends_with(kCanceled));
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.shown[0].text.Contains("is not valid"));
}
