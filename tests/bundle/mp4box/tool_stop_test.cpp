// The bundle's MP4Box when it, the work below it or the program above it is stopped.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <array>

#include "bundle/support/stand_in.h"

namespace {

using Names = std::vector<std::string>;

class StoppedSubtitles : public testing::Test {
  protected:
    void SetUp() override {
        mp4_ = folder_ / "movie.mp4";
        ASSERT_TRUE(make_movie_with_subtitles(mp4_));
        before_ = content_of(mp4_);
        const std::string text =
            folder_.write("movie.srt", "1\n00:00:00,100 --> 00:00:00,500\nText\n");
        words_ = {TOOL_MP4BOX, "-add", text + ":hdlr=sbtl", mp4_};
        std::filesystem::create_directory(work_.held() / "tmp");
        std::filesystem::create_directory(work_.held() / "session");
    }

    /// Variables that also give the tool its own folders for temporary files and for the session.
    ChildRun::Variables variables() const {
        auto all = work_.variables();
        all.emplace_back("TMPDIR", work_.held() / "tmp");
        all.emplace_back("XDG_RUNTIME_DIR", work_.held() / "session");
        return all;
    }

    bool left_something_temporary() const {
        return !std::filesystem::is_empty(work_.held() / "tmp");
    }

    void expect_nothing_changed() const {
        EXPECT_EQ(content_of(mp4_), before_);
        EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.mp4.failed.txt", "movie.srt"}));
    }

    HeldWork work_;
    TemporaryFolder folder_;
    std::string mp4_;
    std::string before_;
    Names words_;
};

TEST_F(StoppedSubtitles, RunTheEncoderUnderAnotherName) {
    ChildRun tool(words_, variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    EXPECT_EQ(content_of("/proc/" + std::to_string(encoder) + "/comm"), "mp4mux\n");
    work_.let_go();
    EXPECT_EQ(tool.wait(), 0) << tool.errors();
    EXPECT_EQ(content_of(mp4_), work_.whole());
    EXPECT_FALSE(left_something_temporary());
}

TEST_F(StoppedSubtitles, AreAddedAfterAKilledRunWhichLeavesNothing) {
    {
        ChildRun killed(words_, variables());
        ASSERT_NE(work_.encoder_id(), 0);
        killed.send(SIGKILL);
        EXPECT_EQ(killed.wait(), 128 + SIGKILL);
    }
    EXPECT_FALSE(left_something_temporary());
    work_.let_go();
    ChildRun next(words_, variables());
    EXPECT_EQ(next.wait(), 0) << next.errors();
    EXPECT_FALSE(left_something_temporary());
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.srt"}));
}

TEST_F(StoppedSubtitles, AreAddedByAnEncoderThatIsAScript) {
    // The interpreter opens the script late, as it may on a busy machine.
    const std::string script = folder_.write(
        "encoder", "#!/usr/bin/env -S sh -c 'sleep 0.3; exec sh \"$0\" \"$@\"'\nexec '" +
                       work_.encoder() + "' \"$@\"\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    auto all = variables();
    all.emplace_back("VANTREO_FFMPEG", script);
    work_.let_go();
    ChildRun tool(words_, all);
    EXPECT_EQ(tool.wait(), 0) << tool.errors();
    EXPECT_EQ(content_of(mp4_), work_.whole());
    EXPECT_FALSE(left_something_temporary());
}

TEST_F(StoppedSubtitles, LeaveTheMp4FileUnchangedOnASignal) {
    for (const int signal : {SIGTERM, SIGINT}) {
        std::filesystem::remove(work_.held() / "id");
        ChildRun tool(words_, variables());
        const pid_t encoder = work_.encoder_id();
        ASSERT_NE(encoder, 0);
        tool.send(signal);
        EXPECT_EQ(tool.wait(), 128 + signal);
        EXPECT_FALSE(is_running(encoder));
        EXPECT_FALSE(left_something_temporary());
        expect_nothing_changed();
    }
}

TEST_F(StoppedSubtitles, LeaveTheMp4FileUnchangedWhenTheEncoderIsKilled) {
    ChildRun tool(words_, variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    ::kill(encoder, SIGKILL);
    EXPECT_EQ(tool.wait(), 1);
    expect_nothing_changed();
}

TEST_F(StoppedSubtitles, LeaveAMp4FileAloneThatHasReplacedTheirs) {
    ChildRun tool(words_, variables());
    ASSERT_NE(work_.encoder_id(), 0);
    std::filesystem::rename(folder_.write("newer", "newer"), mp4_);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_EQ(content_of(mp4_), "newer");
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.mp4.failed.txt", "movie.srt"}));
    EXPECT_NE(content_of(mp4_ + ".failed.txt").find("was replaced or removed meanwhile"),
              std::string::npos);
}

TEST_F(StoppedSubtitles, LeaveNoNoteBesideANewerMp4FileThatHasSubtitles) {
    ChildRun tool(words_, variables());
    ASSERT_NE(work_.encoder_id(), 0);
    std::filesystem::rename(folder_.write("newer", work_.whole()), mp4_);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_EQ(content_of(mp4_), work_.whole());
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.srt"}));
}

TEST_F(StoppedSubtitles, DoNotBringBackAMp4FileThatWasRemoved) {
    ChildRun tool(words_, variables());
    ASSERT_NE(work_.encoder_id(), 0);
    std::filesystem::remove(mp4_);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4.failed.txt", "movie.srt"}));
}

TEST_F(StoppedSubtitles, AreFinishedWhenTheProgramDies) {
    // The program's end closes the pipe that it read from and may hang up the terminal.
    Names program{"sh", "-c", R"("$@" | { read -r first; kill -9 $$; })", "sh"};
    program.insert(program.end(), words_.begin(), words_.end());
    ChildRun parent(program, variables());
    const pid_t encoder = work_.encoder_id();
    ASSERT_NE(encoder, 0);
    const pid_t tool = [encoder] {
        const std::string status = content_of("/proc/" + std::to_string(encoder) + "/status");
        return std::stoi(status.substr(status.find("PPid:") + 5));
    }();
    parent.send(SIGKILL);
    EXPECT_EQ(parent.wait(), 128 + SIGKILL);
    ::kill(tool, SIGHUP);
    work_.let_go();
    EXPECT_TRUE(eventually([tool] { return !is_running(tool); }));
    EXPECT_EQ(content_of(mp4_), work_.whole());
    EXPECT_EQ(folder_.names(), (Names{"movie.mp4", "movie.srt"}));
}

TEST_F(StoppedSubtitles, AreFinishedWhenNobodyReadsTheProgressAnyMore) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ChildRun tool(words_, variables(), [&ends] { ::dup2(ends[1], STDOUT_FILENO); });
    ::close(ends[0]);
    ::close(ends[1]);
    ASSERT_NE(work_.encoder_id(), 0);
    work_.let_go();
    EXPECT_EQ(tool.wait(), 0) << tool.errors();
    EXPECT_EQ(content_of(mp4_), work_.whole());
}

TEST_F(StoppedSubtitles, SurviveKillall) {
    if (!can_be_alone()) {
        GTEST_SKIP() << "no process-id namespaces here";
    }
    // A decoy of that name shows that killall has done its work.
    Names script = alone({"sh", "-c", R"(
        "$@" & tool=$!
        while [ ! -e "$STAND_IN_FOLDER/id" ] && kill -0 $tool; do sleep 0.01; done
        mkdir "$STAND_IN_FOLDER/decoy"
        STAND_IN_FOLDER="$STAND_IN_FOLDER/decoy" "$VANTREO_FFMPEG" decoy & decoy=$!
        while [ ! -e "$STAND_IN_FOLDER/decoy/id" ] && kill -0 $decoy; do sleep 0.01; done
        killall ffmpeg
        wait $decoy; echo $? > "$STAND_IN_FOLDER/status"
        : > "$STAND_IN_FOLDER/go"
        wait $tool; echo $? >> "$STAND_IN_FOLDER/status")",
                          "sh"});
    script.insert(script.end(), words_.begin(), words_.end());
    ChildRun run(script, variables());
    EXPECT_EQ(run.wait(), 0) << run.errors();
    EXPECT_EQ(content_of(work_.held() / "status"), "143\n0\n") << run.errors();
    EXPECT_EQ(content_of(mp4_), work_.whole());
}

}  // namespace
