#include "output/failure_note.h"

#include <gtest/gtest.h>
#include <utime.h>

#include <cstdlib>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

using Names = std::vector<std::string>;

class FailureNotes : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_ / "movies");
        ::setenv("HOME", (folder_ / "home").c_str(), 1);
    }

    std::string text() const { return content_of(subject_.output + ".failed.txt"); }
    bool says(const std::string& words) const { return text().find(words) != std::string::npos; }
    void leave(Step step, const FailureNote& note) const {
        EXPECT_TRUE(leave_note(subject_, step, note));
    }

    TemporaryFolder out_;
    TemporaryFolder folder_;
    Subject subject_{out_ / "movie.mp4", folder_ / "movies/movie.avi"};
};

TEST_F(FailureNotes, SaysWhatCanBeDoneAndWhatHappenedInTheOrderOfTheSteps) {
    leave(Step::kSubtitles, {"late", "old", ""});
    leave(Step::kConversion, {"short", "new", "line 1\nline 2", true, "Look.", ""});
    EXPECT_EQ(text(),
              "Vantreo: there was a problem with this movie.\n\n== The conversion ==\n"
              "What you can do:\n    Look.\n"
              "What happened:\n    short\nResult:\n    new\n"
              "The last lines of the tool:\n    line 1\n    line 2\nThe MP4 file was made.\n"
              "\n== The subtitles ==\n"
              "What happened:\n    late\nResult:\n    old\n");
    EXPECT_EQ(out_.names(), Names{"movie.mp4.failed.txt"});
}

TEST_F(FailureNotes, IsReplacedByTheNextFailureOfTheStep) {
    leave(Step::kConversion, {"first", "", ""});
    leave(Step::kConversion, {"second", "", ""});
    EXPECT_FALSE(says("first"));
    EXPECT_TRUE(says("second"));
}

TEST_F(FailureNotes, IsRemovedWhenTheStepSucceeds) {
    leave(Step::kConversion, {"short", "", "", true});
    leave(Step::kSubtitles, {"late", "", ""});
    clear_note(subject_, Step::kSubtitles);
    EXPECT_TRUE(says("short"));
    EXPECT_FALSE(says("late"));
    clear_note(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), Names{});
}

TEST_F(FailureNotes, IsRemovedCompletelyWhenAConversionSucceeds) {
    leave(Step::kSubtitles, {"late", "", ""});
    clear_note(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), Names{});
}

TEST_F(FailureNotes, KeepsAPersonsFileAndGoesBesideTheMovie) {
    const std::string other = out_.write("movie.mp4.failed.txt", "my notes");
    const auto written = leave_note(subject_, Step::kConversion, {"failed", "", ""});
    ASSERT_TRUE(written);
    EXPECT_TRUE(written->path.starts_with(folder_ / "movies/movie.mp4~")) << written->path;
    EXPECT_NE(written->why_not_beside.find("a file of your own"), std::string::npos);
    EXPECT_NE(content_of(written->path).find("failed"), std::string::npos);
    clear_note(subject_, Step::kConversion);
    EXPECT_EQ(content_of(other), "my notes");
    EXPECT_FALSE(std::filesystem::exists(written->path));
}

TEST_F(FailureNotes, KeepsALink) {
    ASSERT_TRUE(leave_note({out_ / "real", ""}, Step::kConversion, {"failed", "", ""}));
    std::filesystem::create_symlink(out_ / "real.failed.txt", subject_.output + ".failed.txt");
    leave(Step::kConversion, {"other", "", ""});
    clear_note(subject_, Step::kConversion);
    EXPECT_EQ(out_.names(), (Names{"movie.mp4.failed.txt", "real.failed.txt"}));
    EXPECT_FALSE(says("other"));
}

TEST_F(FailureNotes, CannotBeForgedByTheToolsLines) {
    leave(Step::kConversion, {"x", "y\n== The subtitles ==\nz", "\n== The subtitles ==\n\x1B[2J"});
    EXPECT_TRUE(says("\n    == The subtitles ==\n"));
    EXPECT_FALSE(says("\n== The subtitles"));
    EXPECT_FALSE(says("\x1B"));
}

TEST_F(FailureNotes, DistinguishesAnOlderMp4FileFromANewOne) {
    out_.write("movie.mp4", "old");
    const utimbuf past{1'000'000, 1'000'000};
    ASSERT_EQ(::utime(subject_.output.c_str(), &past), 0);
    EXPECT_FALSE(conversion_failed(subject_));
    leave(Step::kConversion, {"failed", "", ""});
    EXPECT_TRUE(conversion_failed(subject_));
    const utimbuf future{4'000'000'000, 4'000'000'000};
    ASSERT_EQ(::utime(subject_.output.c_str(), &future), 0);
    EXPECT_FALSE(conversion_failed(subject_));
}

TEST_F(FailureNotes, DoesNotTakeAShortMp4FileForAFailure) {
    leave(Step::kConversion, {"short", "", "", true});
    EXPECT_FALSE(conversion_failed(subject_));
}

TEST_F(FailureNotes, GoesIntoTheHomeFolderWhereNeitherOtherFolderTakesIt) {
    std::filesystem::create_directory(folder_ / "home");
    const Subject lost{"/proc/movie.mp4", "/proc/movie.avi"};
    const auto written = leave_note(lost, Step::kConversion, {"failed", "", ""});
    ASSERT_TRUE(written);
    EXPECT_TRUE(written->path.starts_with(folder_ / "home/movie.mp4~")) << written->path;
    EXPECT_TRUE(conversion_failed(lost));
    clear_note(lost, Step::kConversion);
    EXPECT_FALSE(std::filesystem::exists(written->path));
}

TEST_F(FailureNotes, IsInOnePlaceOnly) {
    std::filesystem::create_directories(folder_ / "gone");
    const Subject subject{folder_ / "later/movie.mp4", subject_.source};
    const auto away = leave_note(subject, Step::kConversion, {"first", "", ""});
    ASSERT_TRUE(away);
    std::filesystem::rename(folder_ / "gone", folder_ / "later");
    const auto beside = leave_note(subject, Step::kConversion, {"second", "", ""});
    ASSERT_TRUE(beside);
    EXPECT_EQ(beside->path, folder_ / "later/movie.mp4.failed.txt");
    EXPECT_EQ(beside->why_not_beside, "");
    EXPECT_FALSE(std::filesystem::exists(away->path));
}

TEST_F(FailureNotes, FailsWhereNothingCanBeWritten) {
    const auto written =
        leave_note({"/proc/movie.mp4", "/proc/movie.avi"}, Step::kConversion, {"failed", "", ""});
    EXPECT_FALSE(written);
}

TEST(NotePlaces, DifferForOutputsOfOneName) {
    const auto one = note_places({"/a/movie.mp4", "/m/movie.avi"});
    const auto other = note_places({"/b/movie.mp4", "/m/movie.avi"});
    ASSERT_GE(one.size(), 2U);
    EXPECT_NE(one[1], other[1]);
    EXPECT_TRUE(one[1].starts_with("/m/movie.mp4~")) << one[1];
    EXPECT_LE(note_places({"/a/" + std::string(255, 'n'), "/m/f"})[1].size(), 3U + 255U);
}

TEST(NotePath, IsShortenedToWhatAFolderTakes) {
    EXPECT_EQ(note_path("a/movie.mp4"), "a/movie.mp4.failed.txt");
    EXPECT_EQ(note_path("a/" + std::string(244, 'n')),
              "a/" + std::string(244, 'n') + ".failed.txt");
    EXPECT_EQ(note_path("/f/" + std::string(245, 'a')),
              "/f/" + std::string(235, 'a') + "~e7d6ea98.failed.txt");
    const std::string accented = std::string(234, 'n') +
                                 "\xC3\xA9"
                                 "and so on.mp4";
    EXPECT_TRUE(note_path("/f/" + accented).starts_with("/f/" + std::string(234, 'n') + "~"));
}

TEST(NotePath, KeepsLongNamesDistinct) {
    const std::string start(244, 'n');
    EXPECT_NE(note_path(start + " 1.mp4"), note_path(start + " 2.mp4"));
    EXPECT_EQ(note_path(start + " 1.mp4"), note_path(start + " 1.mp4"));
    EXPECT_EQ(note_path(start + " 1.mp4").size(), 255U);
}

}  // namespace
}  // namespace bundle
