// Whole runs through the real frame, with doubles for the two tools.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/filename.h>
#include <wx/gauge.h>
#include <wx/listbox.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

using Steps = std::vector<wxString>;

const wxString kCompleted = "Conversion completed!";
const wxString kCanceled = "Conversion canceled";
const wxString kBadMovie =
    "Error: The movie file you have selected is not valid. Please select another one.";
const wxString kOverwrite =
    "Destination file already exists. Are you sure you would like to overwrite it? If No, click "
    "'No' and select another directory.";
const wxString kConfirmCancel =
    "A movie Conversion is being processed. Do you really want to Cancel it?";

class Queue : public FrameTest {
  protected:
    /// Presses Convert and waits for the end of the run.
    bool run(std::initializer_list<wxString> names, const wxString& end) {
        add(names);
        press(frame->buttonConvert);
        return wait_until([&] { return status() == end && !running(); });
    }

    wxString message(size_t index) const {
        return index < dialogs.shown.size() ? dialogs.shown[index].text : wxString("(none)");
    }
};

}  // namespace

TEST_F(Queue, ProbesAllMoviesBeforeItConvertsThem) {
    start();
    ASSERT_TRUE(run({"a.avi", "b.avi", "c.avi"}, kCompleted));
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe b.avi", "probe c.avi", "convert a.avi",
                              "convert b.avi", "convert c.avi"}));
    EXPECT_EQ(frame->textMovies->GetCount(), 0U);
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(frame->GetTitle(), "100% - Vantreo");
}

TEST_F(Queue, PassesTheToolsTheirExactCommandLines) {
    setting("Optimize", "2");
    start();
    movies.write("a b.srt");
    ASSERT_TRUE(run({"a b.avi"}, kCompleted));
    const wxString source = movies.file("a b.avi");
    const wxString output = out.file("a b.mp4");
    ASSERT_EQ(calls().size(), 3U);
    EXPECT_EQ(calls()[0], "ffmpeg -i " + source);
    EXPECT_EQ(
        calls()[1],
        "ffmpeg -y -i " + source +
            " -acodec aac -strict experimental -ab 128k -ac 2 -ar 44100 -coder 0 -flags +loop "
            "-cmp +chroma -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq "
            "6 -me_range 16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 "
            "-qcomp 0.6 -qmin 10 -qmax 51 -qdiff 4 -bf 0 -refs 2 -directpred 1 -trellis 1 "
            "-flags2 +bpyramid+mixed_refs+fastpskip -wpredp 0 -rc_lookahead 30 -level 30 "
            "-maxrate 10000000 -bufsize 10000000 -crf 21 -threads 0 -f ipod -s 1024x576 " +
            output);
    EXPECT_EQ(calls()[2], "MP4Box -add " + movies.file("a b.srt") + ":hdlr=sbtl " + output);
}

TEST_F(Queue, AddsSubtitlesAfterEachTranscodeThatHasSome) {
    start();
    movies.write("a.srt");
    movies.write("c.srt");
    ASSERT_TRUE(run({"a.avi", "b.avi", "c.avi"}, kCompleted));
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe b.avi", "probe c.avi", "convert a.avi",
                              "mux a.srt", "convert b.avi", "convert c.avi", "mux c.srt"}));
}

TEST_F(Queue, ShowsTheSubtitleStep) {
    start();
    movies.write("a.srt");
    start_run({"a.avi", "b.avi"});
    EXPECT_EQ(status(), "Conversion in progress... (1/2)");
    hold("MP4Box");
    release();
    ASSERT_TRUE(wait_for_steps(4));
    ASSERT_EQ(steps()[3], "mux a.srt");
    EXPECT_EQ(status(), "Conversion in progress... (1/2) Adding Subtitles");
    EXPECT_EQ(frame->gaugeProgress->GetRect(), wxRect(20, 225, 633, 15));
    EXPECT_TRUE(running());
    release("MP4Box");
    ASSERT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, ShowsNoPositionWhileItProbes) {
    start();
    add({"a.avi", "b.avi"});
    press(frame->buttonConvert);
    EXPECT_EQ(status(), "Conversion in progress...");
    EXPECT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, ShowsTheMuxersProgress) {
    start();
    movies.write("a.srt");
    doubles.write("mux", "ISO File Writing: |==    | (45/100)\r");
    hold("MP4Box");
    add({"a.avi"});
    press(frame->buttonConvert);
    EXPECT_TRUE(wait_until([this] { return frame->labelPercent->GetLabel() == "45%"; }));
    release("MP4Box");
    EXPECT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, KeepsTheDecisionAboutSubtitlesThatTheProbeMade) {
    start();
    movies.write("a.srt");
    start_run({"a.avi", "b.avi"});
    movies.remove("a.srt");
    movies.write("b.srt");
    release();
    ASSERT_TRUE(wait_until([this] { return status() == kCompleted; }));
    EXPECT_EQ(steps(),
              (Steps{"probe a.avi", "probe b.avi", "convert a.avi", "mux a.srt", "convert b.avi"}));
}

TEST_F(Queue, StopsAtAnEmptyListWithoutNamingAMovie) {
    start();
    dialogs.answers = {wxID_OK};
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([this] { return !running(); }));
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(message(0), kBadMovie);
    EXPECT_EQ(dialogs.shown[0].caption, "");
    EXPECT_EQ(dialogs.shown[0].style, 516);
    EXPECT_EQ(dialogs.shown[0].parent, frame);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(calls(), (Steps{"ffmpeg -i "}));
}

TEST_F(Queue, StopsAtTheFirstBadMovieAndConvertsNothing) {
    start();
    dialogs.answers = {wxID_OK};
    ASSERT_TRUE(run({"a.avi", "bad.avi", "c.avi"}, kCanceled));
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe bad.avi"}));
    EXPECT_EQ(message(0), movies.file("bad.avi") + ":\n" + kBadMovie);
    EXPECT_EQ(frame->textMovies->GetCount(), 3U);
}

TEST_F(Queue, TreatsADismissedErrorAsAcknowledged) {
    start();
    dialogs.answers = {wxID_CANCEL};
    ASSERT_TRUE(run({"bad.avi"}, kCanceled));
}

TEST_F(Queue, ChangesNoStateWhenTheErrorIsNotAcknowledged) {
    start();
    dialogs.answers = {wxID_HELP};
    add({"bad.avi"});
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([this] { return !dialogs.shown.empty(); }));
    run_pending_events();
    EXPECT_TRUE(running());
    EXPECT_EQ(status(), "Conversion in progress...");
}

TEST_F(Queue, ReportsABadOutputFolderAndAMovieOntoItself) {
    setting("Output", out.file("none"));
    start();
    dialogs.answers = {wxID_OK, wxID_OK};
    ASSERT_TRUE(run({"a.mp4"}, kCanceled));
    EXPECT_EQ(message(0), movies.file("a.mp4") +
                              ":\nError: The destination directory you have selected is not "
                              "valid. Please select another one.");
    frame->textOutput->SetValue(movies.path());
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([this] { return dialogs.shown.size() == 2 && !running(); }));
    EXPECT_EQ(message(1), movies.file("a.mp4") +
                              ":\nError: The Movie file is the same as the destination file.");
}

TEST_F(Queue, AsksBeforeOverwritingAndStopsAfterNo) {
    start();
    out.write("b.mp4", "precious");
    dialogs.answers = {wxID_NO};
    ASSERT_TRUE(run({"a.avi", "b.avi"}, kCanceled));
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(message(0), out.file("b.mp4") + ":\n" + kOverwrite);
    EXPECT_EQ(dialogs.shown[0].style, 1162);
    EXPECT_EQ(dialogs.shown[0].parent, frame);
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe b.avi"}));
    EXPECT_EQ(file_text(out.file("b.mp4")), "precious");
}

TEST_F(Queue, ContinuesAfterAnyOtherAnswerToTheOverwriteQuestion) {
    start();
    dialogs.answers = {wxID_YES, wxID_HELP};
    for (const size_t converted : {1U, 2U}) {
        out.write("a.mp4");
        ASSERT_TRUE(run({"a.avi"}, kCompleted));
        EXPECT_EQ(steps().size(), 2 * converted);
    }
}

TEST_F(Queue, TreatsADismissedOverwriteQuestionAsNo) {
    start();
    out.write("a.mp4", "precious");
    dialogs.answers = {wxID_CANCEL};
    ASSERT_TRUE(run({"a.avi"}, kCanceled));
    EXPECT_EQ(steps(), Steps{"probe a.avi"});
}

TEST_F(Queue, OverwritesWithoutAskingIfThatIsSet) {
    setting("Overwrite", "false");
    start();
    out.write("a.mp4");
    ASSERT_TRUE(run({"a.avi"}, kCompleted));
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Queue, ContinuesUnlessTheCancelIsConfirmed) {
    start();
    start_run({"a.avi"});
    dialogs.answers = {wxID_NO, wxID_CANCEL, wxID_HELP};
    for (int press_count = 1; press_count <= 3; ++press_count) {
        press(frame->buttonConvert);
        EXPECT_TRUE(running());
    }
    ASSERT_EQ(dialogs.shown.size(), 3U);
    EXPECT_EQ(message(0), kConfirmCancel);
    EXPECT_EQ(dialogs.shown[0].style, 1162);
    EXPECT_TRUE(running());
    release();
    EXPECT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, StopsTheToolWhenTheCancelIsConfirmed) {
    start();
    start_run({"a.avi", "b.avi"});
    const Movie* const job = frame->movies[0];
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    EXPECT_EQ(status(), kCanceled);
    EXPECT_FALSE(running());
    EXPECT_EQ(job->mode, "cancel");
    EXPECT_TRUE(wait_until([&] { return job->Ended(); }, 1.0));
    EXPECT_EQ(steps().size(), 3U) << "nothing is started after the cancel";
    EXPECT_EQ(status(), kCanceled);
}

TEST_F(Queue, KeepsTheFocusOnTheButtonThatCanceled) {
    start();
    start_run({"a.avi"});
    frame->buttonConvert->SetFocus();
    ASSERT_TRUE(wait_until([this] { return frame->buttonConvert->HasFocus(); }));
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    EXPECT_TRUE(wait_until([this] { return frame->buttonConvert->HasFocus(); }));
}

TEST_F(Queue, CancelsAProbe) {
    start();
    add({"a.avi"});
    press(frame->buttonConvert);
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    EXPECT_EQ(status(), kCanceled);
    const Movie* const job = frame->movies[0];
    EXPECT_TRUE(wait_until([&] { return job->Ended(); }, 1.0));
    EXPECT_EQ(job->infos, "");
    EXPECT_FALSE(running());
}

TEST_F(Queue, LetsTheMuxerFinishWhenItIsCanceled) {
    start();
    movies.write("a.srt");
    start_run({"a.avi", "b.avi"});
    hold("MP4Box");
    release();
    ASSERT_TRUE(wait_for_steps(4));
    ASSERT_EQ(steps()[3], "mux a.srt");
    const Movie* const job = frame->movies[0];
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    EXPECT_EQ(status(), kCanceled);
    EXPECT_FALSE(job->Ended()) << "MP4Box runs on";
    release("MP4Box");
    ASSERT_TRUE(wait_until([&] { return job->Ended(); }));
    run_pending_events();
    EXPECT_EQ(status(), kCanceled);
    EXPECT_EQ(steps().size(), 4U);
}

TEST_F(Queue, DoesNotContinueDuringAnOpenQuestion) {
    start();
    start_run({"a.avi"});
    const Movie* const job = frame->movies[0];
    dialogs.answers = {wxID_NO};
    dialogs.whileOpen = [&] {
        release();
        ASSERT_TRUE(wait_until([&] { return job->ffmpeg->Ended(); }));
        EXPECT_EQ(status(), "Conversion in progress...");
    };
    // The hook replaces ShowModal, so the box counts as open while the hook runs.
    press(frame->buttonConvert);
    EXPECT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, ContinuesInOrderWhenAPostponedEndAsksAgain) {
    start();
    Steps done;
    const auto note = [&](const wxString& step) { return [&done, step] { done.push_back(step); }; };
    dialogs.whileOpen = [&] {
        if (dialogs.shown.size() == 1) {
            frame->RunUnlessAsking([&] {
                done.push_back("asks");
                frame->ShowMessage("second", wxOK);
                done.push_back("answered");
            });
            frame->RunUnlessAsking(note("next"));
        } else {
            run_pending_events();
            frame->RunUnlessAsking(note("came below the second"));
        }
        EXPECT_TRUE(done.empty() || done.back() == "asks") << "nothing below an open box";
    };
    frame->ShowMessage("first", wxOK);
    ASSERT_TRUE(wait_until([&] { return done.size() == 4; }));
    EXPECT_EQ(done, (Steps{"asks", "answered", "next", "came below the second"}));
}

TEST_F(Queue, ForgetsAnEndDuringAConfirmedCancel) {
    start();
    start_run({"a.avi"});
    const Movie* const job = frame->movies[0];
    dialogs.answers = {wxID_YES};
    dialogs.whileOpen = [&] {
        release();
        ASSERT_TRUE(wait_until([&] { return job->ffmpeg->Ended(); }));
    };
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([&] { return job->Ended(); }));
    run_pending_events();
    EXPECT_EQ(status(), kCanceled);
    EXPECT_EQ(frame->textMovies->GetCount(), 1U);
}

TEST_F(Queue, StartsAgainWithTheFirstEntryAndNewJobs) {
    start();
    ASSERT_TRUE(run({"a.avi", "b.avi"}, kCompleted));
    ASSERT_TRUE(run({"c.avi", "d.avi"}, kCompleted));
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe b.avi", "convert a.avi", "convert b.avi",
                              "probe c.avi", "probe d.avi", "convert c.avi", "convert d.avi"}));
}

TEST_F(Queue, StartsAgainAfterACancel) {
    start();
    start_run({"a.avi"});
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    release();
    press(frame->buttonConvert);
    EXPECT_TRUE(wait_until([this] { return status() == kCompleted; }));
}

TEST_F(Queue, UsesTheFolderAndDeviceOfTheWindow) {
    start();
    Folder other;
    frame->textOutput->SetValue(other.path());
    frame->comboboxOptimize->SetSelection(1);
    ASSERT_TRUE(run({"a.avi"}, kCompleted));
    EXPECT_TRUE(calls()[1].EndsWith(" -s 960x540 " + other.file("a.mp4")));
}

TEST_F(Queue, ReportsAMissingFFmpegAndStillProbes) {
    start();
    remove_tool("ffmpeg");
    dialogs.answers = {wxID_OK, wxID_OK};
    ASSERT_TRUE(run({"a.avi"}, kCanceled));
    EXPECT_EQ(message(0), "Error: Can't find FFmpeg. Please reinstall Vantreo.");
    // The probe was started anyway and ends without a report.
    ASSERT_TRUE(wait_until([this] { return dialogs.shown.size() == 2; }));
    EXPECT_EQ(message(1), movies.file("a.avi") + ":\n" + kBadMovie);
    EXPECT_EQ(status(), kCanceled);
}

TEST_F(Queue, ReportsAMissingMP4BoxWithTheMovieBeforeAndAfterTheProbe) {
    start();
    remove_tool("MP4Box");
    dialogs.answers = {wxID_OK, wxID_OK};
    ASSERT_TRUE(run({"a.avi"}, kCanceled));
    const wxString text =
        movies.file("a.avi") + ":\nError: Can't find MP4Box. Please reinstall Vantreo.";
    EXPECT_EQ(message(0), text);
    ASSERT_TRUE(wait_until([this] { return dialogs.shown.size() == 2; }));
    EXPECT_EQ(message(1), text);
    EXPECT_EQ(steps(), Steps{"probe a.avi"});
}

TEST_F(Queue, ReportsAMissingMP4BoxAfterAMissingFFmpeg) {
    start();
    remove_tool("ffmpeg");
    remove_tool("MP4Box");
    dialogs.answers = {wxID_OK, wxID_OK, wxID_OK};
    ASSERT_TRUE(run({"a.avi"}, kCanceled));
    ASSERT_TRUE(wait_until([this] { return dialogs.shown.size() == 3; }));
    EXPECT_EQ(message(0), "Error: Can't find FFmpeg. Please reinstall Vantreo.");
    EXPECT_EQ(message(1),
              movies.file("a.avi") + ":\nError: Can't find MP4Box. Please reinstall Vantreo.");
}

TEST_F(Queue, IgnoresTheLateProbeOfAnEarlierRun) {
    start();
    remove_tool("MP4Box");
    dialogs.answers = {wxID_OK};
    add({"a.avi"});
    press(frame->buttonConvert);  // its probe continues behind the message
    restore_tool("MP4Box");
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([this] { return status() == kCompleted; }));
    EXPECT_EQ(steps(), (Steps{"probe a.avi", "probe a.avi", "convert a.avi"}));
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(Queue, KeepsAJobWhoseMuxerOutlastsTheNextRun) {
    start();
    movies.write("a.srt");
    hold("MP4Box");
    add({"a.avi"});
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_for_steps(3));
    const Movie* const job = frame->movies[0];
    dialogs.answers = {wxID_YES};
    press(frame->buttonConvert);
    ASSERT_EQ(status(), kCanceled);
    movies.remove("a.srt");
    ASSERT_TRUE(run({}, kCompleted));
    EXPECT_EQ(job->mode, "cancel") << "still there";
    EXPECT_FALSE(job->Ended());
    release("MP4Box");
    EXPECT_TRUE(wait_until([&] { return job->Ended(); }));
    EXPECT_EQ(status(), kCompleted);
}

TEST_F(Queue, CountsAFailedStepAsDone) {
    start();
    convert_prints("a.avi: something went wrong\n");
    ASSERT_TRUE(run({"a.avi"}, kCompleted));
    EXPECT_EQ(frame->labelPercent->GetLabel(), "100%");
}
