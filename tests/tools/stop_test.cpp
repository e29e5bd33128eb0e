// What Cancel ends, and when it returns.

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <memory>
#include <string>

#include "convert/Movie.h"
#include "protocol/stop_mark.h"
#include "support/environment.h"
#include "support/frame_test.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

using namespace std::chrono_literals;

constexpr long kSlowMillis = 300;

/// Waits for SIGTERM in a process that has blocked it.
void await_term() {
    sigset_t term;
    sigemptyset(&term);
    sigaddset(&term, SIGTERM);
    int signal = 0;
    ::sigwait(&term, &signal);
}

void sleep_for_good() {
    for (;;)
        ::pause();
}

// What a process does once SIGTERM is blocked.

void ends_when_asked() {
    await_term();
}

void ends_slowly() {
    await_term();
    const timespec slow{0, kSlowMillis * 1'000'000};
    ::nanosleep(&slow, nullptr);
}

void starts_another_at_its_end() {
    await_term();
    if (::fork() == 0)
        await_term();
}

void stays() {
    sleep_for_good();
}

void ends_at_once() {}

/// Another process with that name and behaviour, ended with the test.
class Neighbour {
  public:
    Neighbour(const char* name, void (*behaviour)(), uid_t user = ::getuid()) {
        int ready[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ready, O_CLOEXEC), 0);
        pid_ = ::fork();
        if (pid_ == 0) {
            sigset_t term;
            sigemptyset(&term);
            sigaddset(&term, SIGTERM);
            ::sigprocmask(SIG_BLOCK, &term, nullptr);
            ::prctl(PR_SET_NAME, name);
            if (user != ::getuid() && ::setuid(user) != 0)
                ::_exit(1);
            ::close(ready[0]);
            if (::write(ready[1], "x", 1) == 1)
                behaviour();
            ::_exit(0);
        }
        ::close(ready[1]);
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1) << name << " has not started";
        ::close(ready[0]);
    }
    ~Neighbour() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;

    pid_t pid() const { return pid_; }

    /// False for a process that only waits to be reaped.
    bool runs() const {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               info.si_pid == 0;
    }

  private:
    pid_t pid_ = -1;
};

/// Records shortly afterwards whether the frame accepts input and whether the stop is marked for
/// the tools.
class InputWatch : public wxTimer {
  public:
    explicit InputWatch(const wxWindow* watched) : window(watched) {
        StartOnce(static_cast<int>(kSlowMillis / 2));
    }
    void Notify() override {
        hasLooked = true;
        tookInput = window->IsEnabled();
        isMarked = stop_mark::is_left_by(::getpid());
    }

    bool hasLooked = false;
    bool tookInput = false;
    bool isMarked = false;

  private:
    const wxWindow* window;
};

class Stop : public FrameTest {
  protected:
    void SetUp() override {
        start();
        job = std::make_unique<Movie>(frame, "", "", 0);
        job->mode = "cancel";
        tool = std::make_unique<FFmpeg>(job.get());
    }

    /// Stops with much more time than any test needs; returns the console output.
    std::string stop(std::chrono::milliseconds limit = 60s) {
        testing::internal::CaptureStderr();
        const wxStopWatch watch;
        tool->Stop(limit);
        millis = watch.Time();
        return testing::internal::GetCapturedStderr();
    }

    /// Stops; true if nothing was left to wait for within the limit.
    bool stops_all() { return stop().find("Still running") == std::string::npos; }

    long millis = 0;  ///< how long the last stop lasted
    std::unique_ptr<Movie> job;
    std::unique_ptr<FFmpeg> tool;
};

}  // namespace

TEST_F(Stop, ReturnsWhenEveryFFmpegIsGoneAndSparesMP4Box) {
    const Neighbour slow("ffmpeg", ends_slowly);
    hold();
    hold("MP4Box");
    FFmpeg other(job.get());
    MP4Box muxer(job.get());
    for (FFmpeg* runner : {tool.get(), &other})
        runner->Run("Vantreo.app/Contents/Resources/ffmpeg -y a b");
    muxer.Run("Vantreo.app/Contents/Resources/MP4Box -add a b");
    ASSERT_TRUE(wait_until([this] { return calls().size() == 3; }));
    const long pids[] = {tool->GetPid(), other.GetPid()};

    muxer.Stop(60s);
    EXPECT_FALSE(slow.runs());
    for (const long pid : pids) {
        const wxString stat = file_text(wxString::Format("/proc/%ld/stat", pid));
        EXPECT_TRUE(stat.empty() || stat.AfterLast(')').StartsWith(" Z")) << stat;
    }
    EXPECT_TRUE(wait_until([&] { return tool->Ended() && other.Ended(); }, 1.0));
    EXPECT_FALSE(muxer.Ended());
    release("MP4Box");
    EXPECT_TRUE(wait_until([&] { return muxer.Ended(); }));
}

TEST_F(Stop, WaitsForNothingWhenNoFFmpegRuns) {
    EXPECT_TRUE(stops_all());
}

TEST_F(Stop, EndsAnFFmpegThatAnotherOneStartsAtItsEnd) {
    const Neighbour parent("ffmpeg", starts_another_at_its_end);
    EXPECT_TRUE(stops_all());
    EXPECT_FALSE(parent.runs());
}

TEST_F(Stop, ReportsOnTheConsoleWhatStillRunsAtTheLimit) {
    const Neighbour stubborn("ffmpeg", stays);
    const std::string console = stop(1200ms);
    EXPECT_NE(console.find("Still running "), std::string::npos) << console;
    EXPECT_TRUE(console.ends_with(" s after they were asked to end, ffmpeg processes " +
                                  std::to_string(stubborn.pid()) + "\n"))
        << console;
    EXPECT_EQ(std::count(console.begin(), console.end(), '\n'), 1) << console;
    EXPECT_GE(millis, 1200);
}

TEST_F(Stop, DoesNotWaitForAnFFmpegThatOnlyWaitsToBeReaped) {
    const Neighbour ended("ffmpeg", ends_at_once);
    ASSERT_TRUE(wait_until([&] { return !ended.runs(); }));
    EXPECT_TRUE(stops_all());
}

TEST_F(Stop, SparesProcessesWhoseNamesOnlyContainTheWord) {
    const Neighbour longer("ffmpeg2", ends_when_asked);
    const Neighbour helper("ffmpeg-helper", ends_when_asked);
    const Neighbour behind("myffmpeg", ends_when_asked);
    const Neighbour odd("x) S (ffmpeg", ends_when_asked);
    EXPECT_TRUE(stops_all());
    for (const Neighbour* spared : {&longer, &helper, &behind, &odd})
        EXPECT_TRUE(spared->runs());
}

TEST_F(Stop, DoesNotWaitForAnotherUsersFFmpeg) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can start a process of another user";
    const Neighbour other("ffmpeg", stays, 65534);
    EXPECT_TRUE(stops_all());
    EXPECT_TRUE(other.runs());
}

TEST_F(Stop, AcceptsNoInputWhileACancelWaits) {
    const Neighbour slow("ffmpeg", ends_slowly);
    job->ffmpeg = tool.get();
    frame->movies = {job.get()};
    dialogs.answers = {wxID_YES};
    InputWatch watch(frame);
    EXPECT_TRUE(frame->Cancel());
    frame->movies.clear();
    EXPECT_TRUE(watch.hasLooked);
    EXPECT_FALSE(watch.tookInput);
    EXPECT_TRUE(frame->IsEnabled());
}

TEST_F(Stop, MarksTheStopForItsOwnTools) {
    const Neighbour slow("ffmpeg", ends_slowly);
    InputWatch watch(frame);
    stop();
    EXPECT_TRUE(watch.isMarked);
    EXPECT_FALSE(stop_mark::is_left_by(::getpid()));
}

TEST_F(Stop, RemovesItsMarkAtTheNextStartIfAToolHasNotEnded) {
    {
        const Neighbour stubborn("ffmpeg", stays);
        stop(100ms);
    }
    EXPECT_TRUE(stop_mark::is_left_by(::getpid()));
    tool->Run("true");
    EXPECT_FALSE(stop_mark::is_left_by(::getpid()));
    EXPECT_TRUE(wait_until([this] { return tool->Ended(); }));
}

TEST_F(Stop, EndsOnlyItsOwnToolWithoutKillall) {
    const Neighbour neighbour("ffmpeg", ends_when_asked);
    tool->Run(
        "sh -c \"trap '/bin/sleep 0.3; exit' TERM; echo >&2; while :; do /bin/sleep 0.02; done\"");
    ASSERT_TRUE(wait_until([this] { return tool->IsErrorAvailable(); }));
    const Environment path("PATH", out.path());
    EXPECT_TRUE(stops_all());
    EXPECT_GE(millis, kSlowMillis);
    EXPECT_TRUE(wait_until([this] { return tool->Ended(); }, 1.0));
    EXPECT_TRUE(neighbour.runs());
}
