// The bundle's ffmpeg when it, the encoder below it or the program above it is stopped.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "bundle/support/stand_in.h"
#include "protocol/stop_mark.h"

namespace {

using Names = std::vector<std::string>;

class StoppedTranscode : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(make_silent_movie(folder_ / "in.avi"));
        old_ = folder_.write("out.mp4", "old");
        words_ = transcode_words(folder_ / "in.avi", "160x120", old_);
    }

    void expect_nothing_changed() const {
        EXPECT_EQ(content_of(old_), "old");
        EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4"}));
    }

    /// The older movie is there, and a note says what happened, of which this is a part.
    void expect_note(const std::string& words) {
        EXPECT_EQ(content_of(old_), "old");
        EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4", "out.mp4.failed.txt"}));
        const std::string note = old_ + ".failed.txt";
        EXPECT_NE(content_of(note).find(words), std::string::npos) << content_of(note);
        std::filesystem::remove(note);
    }

    HeldWork work_;
    TemporaryFolder folder_;
    std::string old_;
    Names words_;
};

TEST_F(StoppedTranscode, ReplacesTheOldOutputOnlyAtItsEnd) {
    ChildRun tool(words_, work_.variables());
    ASSERT_NE(work_.encoder_id(), 0);
    EXPECT_EQ(content_of(old_), "old");
    EXPECT_EQ(folder_.names().size(), 3U);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 0) << tool.errors();
    EXPECT_EQ(content_of(old_), work_.whole());
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4"}));
}

TEST_F(StoppedTranscode, EndsWithItsEncoderOnASignal) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::filesystem::remove(work_.held() / "id");
        ChildRun tool(words_, work_.stubborn_variables());
        const pid_t encoder = work_.encoder_id();
        ASSERT_NE(encoder, 0);
        tool.send(signal);
        EXPECT_EQ(tool.wait(), 128 + signal);
        EXPECT_FALSE(is_running(encoder));
        expect_note("stopped by signal " + std::to_string(signal) + " (");
    }
}

TEST_F(StoppedTranscode, LeavesNoNoteWhenTheProgramSaysThatItStopsIt) {
    const TemporaryFolder session;
    ::setenv("XDG_RUNTIME_DIR", session.path().c_str(), 1);
    ChildRun tool(words_, work_.variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    stop_mark::leave();
    tool.send(SIGTERM);
    EXPECT_EQ(tool.wait(), 128 + SIGTERM);
    stop_mark::remove();
    EXPECT_FALSE(is_running(encoder));
    expect_nothing_changed();
    EXPECT_FALSE(std::filesystem::exists(session / "vantreo/cancel-" + std::to_string(::getpid())));
}

TEST_F(StoppedTranscode, LeavesNoNoteWhenOnlyItsEncoderHasHeardOfACancel) {
    const TemporaryFolder session;
    ::setenv("XDG_RUNTIME_DIR", session.path().c_str(), 1);
    ChildRun tool(words_, work_.variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    stop_mark::leave();
    ::kill(encoder, SIGKILL);
    EXPECT_EQ(tool.wait(), 1);
    stop_mark::remove();
    expect_nothing_changed();
}

TEST_F(StoppedTranscode, LeavesANoteWhenAnotherProgramStopsIt) {
    const TemporaryFolder session;
    ::setenv("XDG_RUNTIME_DIR", session.path().c_str(), 1);
    ChildRun tool(words_, work_.variables());
    ASSERT_NE(work_.encoder_id(), 0);
    ChildRun other({"true"});
    EXPECT_EQ(other.wait(), 0);
    std::filesystem::create_directory(session / "vantreo");
    session.write("vantreo/cancel-" + std::to_string(other.id()), "");
    tool.send(SIGTERM);
    EXPECT_EQ(tool.wait(), 128 + SIGTERM);
    expect_note("Convert the movie again.");
}

TEST_F(StoppedTranscode, HearsSignalsThatWereBlockedOrIgnoredAbove) {
    ChildRun tool(words_, work_.variables(), [] {
        sigset_t all;
        sigfillset(&all);
        ::sigprocmask(SIG_SETMASK, &all, nullptr);
        for (const int signal : {SIGCHLD, SIGTERM, SIGPIPE}) {
            ::signal(signal, SIG_IGN);
        }
    });
    ASSERT_NE(work_.encoder_id(), 0);
    tool.send(SIGTERM);
    EXPECT_EQ(tool.wait(), 128 + SIGTERM);
    expect_note("stopped by signal 15");
}

TEST_F(StoppedTranscode, EndsWhenItsEncoderIsKilled) {
    ChildRun tool(words_, work_.variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    ::kill(encoder, SIGKILL);
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_NE(tool.errors().find("ended from outside by signal 9 (Killed)"), std::string::npos)
        << tool.errors();
    EXPECT_EQ(content_of(old_), "old");
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "out.mp4", "out.mp4.failed.txt"}));
}

TEST_F(StoppedTranscode, LeavesNoEncoderWhenItIsKilled) {
    ChildRun tool(words_, work_.stubborn_variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    tool.send(SIGKILL);
    EXPECT_EQ(tool.wait(), 128 + SIGKILL);
    EXPECT_TRUE(eventually([encoder] { return !is_running(encoder); }));
    EXPECT_EQ(content_of(old_), "old");
    EXPECT_EQ(folder_.names().size(), 3U);
    // The next run cleans up, even one that fails.
    auto words = transcode_words(folder_ / "in.avi", "160x120", folder_ / "other.mp4");
    words.insert(words.end() - 3, {"-threads", "many"});
    ChildRun next(words);
    EXPECT_EQ(next.wait(), 1);
    EXPECT_EQ(folder_.names(), (Names{"in.avi", "other.mp4.failed.txt", "out.mp4"}));
}

TEST_F(StoppedTranscode, EndsWithTheProgramThatStartedIt) {
    Names program{"sh", "-c", R"("$@" & echo $! > "$STAND_IN_FOLDER/tool"; wait)", "sh"};
    program.insert(program.end(), words_.begin(), words_.end());
    ChildRun parent(program, work_.stubborn_variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    const pid_t tool = std::stoi(content_of(work_.held() / "tool"));
    ASSERT_TRUE(is_running(tool));
    parent.send(SIGKILL);
    EXPECT_TRUE(eventually([&] { return !is_running(tool) && !is_running(encoder); }));
    expect_nothing_changed();
}

TEST_F(StoppedTranscode, IsEndedWithItsEncoderByKillall) {
    if (!can_be_alone()) {
        GTEST_SKIP() << "no process-id namespaces here";
    }
    Names script = alone({"sh", "-c", R"(
        "$@" & tool=$!
        while [ ! -e "$STAND_IN_FOLDER/id" ] && kill -0 $tool; do sleep 0.01; done
        killall ffmpeg
        wait $tool; echo $? > "$STAND_IN_FOLDER/status"
        killall -0 ffmpeg && echo left > "$STAND_IN_FOLDER/status"
        true)",
                          "sh"});
    script.insert(script.end(), words_.begin(), words_.end());
    ChildRun run(script, work_.stubborn_variables());
    EXPECT_EQ(run.wait(), 0) << run.errors();
    EXPECT_EQ(content_of(work_.held() / "status"), "143\n") << run.errors();
    expect_note("stopped by signal 15");
}

TEST_F(StoppedTranscode, NeverWaitsForAReaderThatHasStoppedReading) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    auto variables = work_.variables();
    variables.emplace_back("STAND_IN_REPORTS", "20000");
    ChildRun tool(words_, variables, [&ends] { ::dup2(ends[1], STDERR_FILENO); });
    EXPECT_NE(work_.encoder_id(), 0);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 0);
    EXPECT_EQ(content_of(old_), work_.whole());
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(StoppedTranscode, RepeatsItsProgressWhileTheEncoderIsSilent) {
    ChildRun tool(words_, work_.variables());
    EXPECT_NE(work_.encoder_id(), 0);
    EXPECT_TRUE(eventually([&tool] {
        const std::string text = tool.errors();
        return std::count(text.begin(), text.end(), '\r') >= 4;
    }));
    EXPECT_NE(tool.errors().find("time=0.01 bitrate="), std::string::npos);
}

}  // namespace
