#include "trace.h"

#include <gtest/gtest.h>
#include <utime.h>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

using Names = std::vector<std::string>;

class Trace : public testing::Test {
  protected:
    std::string text() const { return content_of(film_ + ".failed.txt"); }
    bool tells(const std::string& words) const { return text().find(words) != std::string::npos; }

    TemporaryFolder folder_;
    std::string film_ = folder_ / "film.mp4";
};

TEST_F(Trace, TellsWhatHappenedInTheOrderOfTheSteps) {
    EXPECT_FALSE(leave_trace(film_, Step::kSubtitles, {"late", "old", ""}));
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"short", "new", "line 1\nline 2", true}));
    EXPECT_EQ(text(),
              "Vantreo: not everything went well here.\n\n== The conversion ==\n"
              "What happened:\n    short\nWhat was left:\n    new\n"
              "The last lines of the tool:\n    line 1\n    line 2\n\n== The subtitles ==\n"
              "What happened:\n    late\nWhat was left:\n    old\n");
    EXPECT_EQ(folder_.names(), Names{"film.mp4.failed.txt"});
}

TEST_F(Trace, IsWrittenAnewByTheNextFailureOfTheStep) {
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"first", "", ""}));
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"second", "", ""}));
    EXPECT_FALSE(tells("first"));
    EXPECT_TRUE(tells("second"));
}

TEST_F(Trace, GoesWithTheSuccessOfTheStep) {
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"short", "", "", true}));
    EXPECT_FALSE(leave_trace(film_, Step::kSubtitles, {"late", "", ""}));
    clear_trace(film_, Step::kSubtitles);
    EXPECT_TRUE(tells("short"));
    EXPECT_FALSE(tells("late"));
    clear_trace(film_, Step::kConversion);
    EXPECT_EQ(folder_.names(), Names{});
}

TEST_F(Trace, GoesAsAWholeWithAConversion) {
    EXPECT_FALSE(leave_trace(film_, Step::kSubtitles, {"late", "", ""}));
    clear_trace(film_, Step::kConversion);
    EXPECT_EQ(folder_.names(), Names{});
}

TEST_F(Trace, SparesAFileOfSomebodyElse) {
    const std::string other = folder_.write("film.mp4.failed.txt", "my notes");
    EXPECT_TRUE(leave_trace(film_, Step::kConversion, {"failed", "", ""}));
    clear_trace(film_, Step::kConversion);
    EXPECT_EQ(content_of(other), "my notes");
}

TEST_F(Trace, SparesALink) {
    EXPECT_FALSE(leave_trace(folder_ / "real", Step::kConversion, {"failed", "", ""}));
    std::filesystem::create_symlink(folder_ / "real.failed.txt", film_ + ".failed.txt");
    EXPECT_TRUE(leave_trace(film_, Step::kConversion, {"other", "", ""}));
    clear_trace(film_, Step::kConversion);
    EXPECT_EQ(folder_.names(), (Names{"film.mp4.failed.txt", "real.failed.txt"}));
    EXPECT_FALSE(tells("other"));
}

TEST_F(Trace, CannotBeForgedByTheToolsLines) {
    EXPECT_FALSE(leave_trace(film_, Step::kConversion,
                             {"x", "y\n== The subtitles ==\nz", "\n== The subtitles ==\n\x1B[2J"}));
    EXPECT_TRUE(tells("\n    == The subtitles ==\n"));
    EXPECT_FALSE(tells("\n== The subtitles"));
    EXPECT_FALSE(tells("\x1B"));
}

TEST_F(Trace, TellsAnOlderFilmFromANewOne) {
    folder_.write("film.mp4", "old");
    const utimbuf past{1'000'000, 1'000'000};
    ASSERT_EQ(::utime(film_.c_str(), &past), 0);
    EXPECT_FALSE(tells_of_no_output(film_));
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"failed", "", ""}));
    EXPECT_TRUE(tells_of_no_output(film_));
    const utimbuf future{4'000'000'000, 4'000'000'000};
    ASSERT_EQ(::utime(film_.c_str(), &future), 0);
    EXPECT_FALSE(tells_of_no_output(film_));
}

TEST_F(Trace, DoesNotTakeAShortFilmForNone) {
    EXPECT_FALSE(leave_trace(film_, Step::kConversion, {"short", "", "", true}));
    EXPECT_FALSE(tells_of_no_output(film_));
}

TEST_F(Trace, FailsWhereNothingCanBeWritten) {
    EXPECT_TRUE(leave_trace(folder_ / "missing/film.mp4", Step::kConversion, {"failed", "", ""}));
}

TEST(TracePath, IsShortenedToWhatAFolderTakes) {
    EXPECT_EQ(trace_path("a/film.mp4"), "a/film.mp4.failed.txt");
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
