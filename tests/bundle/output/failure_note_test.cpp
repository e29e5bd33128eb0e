#include "output/failure_note.h"

#include <gtest/gtest.h>
#include <utime.h>

#include <cstdlib>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

using Names = std::vector<std::string>;

class Trace : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_ / "movies");
        ::setenv("HOME", (folder_ / "home").c_str(), 1);
    }

    std::string text() const { return content_of(subject_.output + ".failed.txt"); }
    bool tells(const std::string& words) const { return text().find(words) != std::string::npos; }
    void leave(Step step, const Report& report) const {
        EXPECT_TRUE(leave_trace(subject_, step, report));
    }

    TemporaryFolder out_;
    TemporaryFolder folder_;
    Subject subject_{out_ / "movie.mp4", folder_ / "movies/movie.avi"};
};

TEST_F(Trace, SaysWhatCanBeDoneAndWhatHappenedInTheOrderOfTheSteps) {
    leave(Step::kSubtitles, {"late", "old", ""});
    leave(Step::kConversion, {"short", "new", "line 1\nline 2", true, "Look.", ""});
    EXPECT_EQ(text(),
              "Vantreo: not everything went well here.\n\n== The conversion ==\n"
              "What you can do:\n    Look.\n"
              "What happened:\n    short\nWhat was left:\n    new\n"
              "The last lines of the tool:\n    line 1\n    line 2\nThe MP4 file was made.\n"
              "\n== The subtitles ==\n"
              "What happened:\n    late\nWhat was left:\n    old\n");
    EXPECT_EQ(out_.names(), Names{"movie.mp4.failed.txt"});
}

TEST_F(Trace, IsReplacedByTheNextFailureOfTheStep) {
    leave(Step::kConversion, {"first", "", ""});
    leave(Step::kConversion, {"second", "", ""});
    EXPECT_FALSE(tells("first"));
    EXPECT_TRUE(tells("second"));
}

TEST_F(Trace, GoesWithTheSuccessOfTheStep) {
    leave(Step::kConversion, {"short", "", "", true});
    leave(Step::kSubtitles, {"late", "", ""});
    clear_trace(subject_, Step::kSubtitles);
    EXPECT_TRUE(tells("short"));
    EXPECT_FALSE(tells("late"));
    clear_trace(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), Names{});
}

TEST_F(Trace, GoesAsAWholeWithAConversion) {
    leave(Step::kSubtitles, {"late", "", ""});
    clear_trace(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), Names{});
}

TEST_F(Trace, SparesAPersonsOwnFileAndGoesBesideTheMovie) {
    const std::string other = out_.write("movie.mp4.failed.txt", "my notes");
    const auto left = leave_trace(subject_, Step::kConversion, {"failed", "", ""});
    ASSERT_TRUE(left);
    EXPECT_TRUE(left->path.starts_with(folder_ / "movies/movie.mp4~")) << left->path;
    EXPECT_NE(left->why_not_beside.find("a file of your own"), std::string::npos);
    EXPECT_NE(content_of(left->path).find("failed"), std::string::npos);
    clear_trace(subject_, Step::kConversion);
    EXPECT_EQ(content_of(other), "my notes");
    EXPECT_FALSE(std::filesystem::exists(left->path));
}

TEST_F(Trace, SparesALink) {
    ASSERT_TRUE(leave_trace({out_ / "real", ""}, Step::kConversion, {"failed", "", ""}));
    std::filesystem::create_symlink(out_ / "real.failed.txt", subject_.output + ".failed.txt");
    leave(Step::kConversion, {"other", "", ""});
    clear_trace(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), (Names{"movie.mp4.failed.txt", "real.failed.txt"}));
    EXPECT_FALSE(tells("other"));
}

TEST_F(Trace, CannotBeForgedByTheToolsLines) {
    leave(Step::kConversion, {"x", "y\n== The subtitles ==\nz", "\n== The subtitles ==\n\x1B[2J"});
    EXPECT_TRUE(tells("\n    == The subtitles ==\n"));
    EXPECT_FALSE(tells("\n== The subtitles"));
    EXPECT_FALSE(tells("\x1B"));
}

TEST_F(Trace, TellsAnOlderMp4FileFromANewOne) {
    out_.write("movie.mp4", "old");
    const utimbuf past{1'000'000, 1'000'000};
    ASSERT_EQ(::utime(subject_.output.c_str(), &past), 0);
    EXPECT_FALSE(tells_of_no_output(subject_));
    leave(Step::kConversion, {"failed", "", ""});
    EXPECT_TRUE(tells_of_no_output(subject_));
    const utimbuf future{4'000'000'000, 4'000'000'000};
    ASSERT_EQ(::utime(subject_.output.c_str(), &future), 0);
    EXPECT_FALSE(tells_of_no_output(subject_));
}

TEST_F(Trace, DoesNotTakeAShortMp4FileForNone) {
    leave(Step::kConversion, {"short", "", "", true});
    EXPECT_FALSE(tells_of_no_output(subject_));
}

TEST_F(Trace, GoesIntoTheHomeFolderWhereNeitherOtherFolderTakesIt) {
    std::filesystem::create_directory(folder_ / "home");
    const Subject lost{"/proc/movie.mp4", "/proc/movie.avi"};
    const auto left = leave_trace(lost, Step::kConversion, {"failed", "", ""});
    ASSERT_TRUE(left);
    EXPECT_TRUE(left->path.starts_with(folder_ / "home/movie.mp4~")) << left->path;
    EXPECT_TRUE(tells_of_no_output(lost));
    clear_trace(lost, Step::kConversion);
    EXPECT_FALSE(std::filesystem::exists(left->path));
}

TEST_F(Trace, IsInOnePlaceOnly) {
    std::filesystem::create_directories(folder_ / "gone");
    const Subject subject{folder_ / "later/movie.mp4", subject_.source};
    const auto away = leave_trace(subject, Step::kConversion, {"first", "", ""});
    ASSERT_TRUE(away);
    std::filesystem::rename(folder_ / "gone", folder_ / "later");
    const auto beside = leave_trace(subject, Step::kConversion, {"second", "", ""});
    ASSERT_TRUE(beside);
    EXPECT_EQ(beside->path, folder_ / "later/movie.mp4.failed.txt");
    EXPECT_EQ(beside->why_not_beside, "");
    EXPECT_FALSE(std::filesystem::exists(away->path));
}

TEST_F(Trace, FailsWhereNothingCanBeWritten) {
    const auto left =
        leave_trace({"/proc/movie.mp4", "/proc/movie.avi"}, Step::kConversion, {"failed", "", ""});
    EXPECT_FALSE(left);
}

TEST(TracePlaces, DifferForOutputsOfOneName) {
    const auto one = trace_places({"/a/movie.mp4", "/m/movie.avi"});
    const auto other = trace_places({"/b/movie.mp4", "/m/movie.avi"});
    ASSERT_GE(one.size(), 2U);
    EXPECT_NE(one[1], other[1]);
    EXPECT_TRUE(one[1].starts_with("/m/movie.mp4~")) << one[1];
    EXPECT_LE(trace_places({"/a/" + std::string(255, 'n'), "/m/f"})[1].size(), 3U + 255U);
}

TEST(TracePath, IsShortenedToWhatAFolderTakes) {
    EXPECT_EQ(trace_path("a/movie.mp4"), "a/movie.mp4.failed.txt");
    EXPECT_EQ(trace_path("a/" + std::string(244, 'n')),
              "a/" + std::string(244, 'n') + ".failed.txt");
    EXPECT_EQ(trace_path("/f/" + std::string(245, 'a')),
              "/f/" + std::string(235, 'a') + "~e7d6ea98.failed.txt");
    const std::string accented = std::string(234, 'n') +
                                 "\xC3\xA9"
                                 "and so on.mp4";
    EXPECT_TRUE(trace_path("/f/" + accented).starts_with("/f/" + std::string(234, 'n') + "~"));
}

TEST(TracePath, TellsLongNamesApart) {
    const std::string start(244, 'n');
    EXPECT_NE(trace_path(start + " 1.mp4"), trace_path(start + " 2.mp4"));
    EXPECT_EQ(trace_path(start + " 1.mp4"), trace_path(start + " 1.mp4"));
    EXPECT_EQ(trace_path(start + " 1.mp4").size(), 255U);
}

}  // namespace
}  // namespace bundle
