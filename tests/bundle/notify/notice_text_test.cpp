#include "notify/notice_text.h"

#include <gtest/gtest.h>

namespace notices {
namespace {

const Entry kConversion{"/o/a.mp4", "0", "a.avi", "It has no sound.", "/o/a.mp4.failed.txt"};
const Entry kSubtitles{"/o/a.mp4", "1", "a.mp4", "No subtitles.", "/o/a.mp4.failed.txt"};

Entry entry_for(const std::string& name) {
    return {"/o/" + name + ".mp4", "0", name, "Failed.", "/o/" + name + ".mp4.failed.txt"};
}

TEST(NoticeText, NamesTheMovieAndItsNote) {
    const Message message = message_on({kConversion}, true);
    EXPECT_EQ(message.summary, "a.avi");
    EXPECT_EQ(message.body, "It has no sound.\nFor details, see /o/a.mp4.failed.txt");
}

TEST(NoticeText, PutsTheStepsOfAMovieTogetherInTheirOrder) {
    const Message message = message_on({kSubtitles, kConversion}, true);
    EXPECT_EQ(message.summary, "a.avi");
    EXPECT_EQ(message.body, "It has no sound. No subtitles.\nFor details, see /o/a.mp4.failed.txt");
}

TEST(NoticeText, CountsSeveralMovies) {
    const Message message = message_on({entry_for("a"), entry_for("b"), entry_for("c")}, true);
    EXPECT_EQ(message.summary, "3 movies: there were problems");
    EXPECT_EQ(message.body,
              "a: Failed.\nb: Failed.\nc: Failed.\nFor details, see the files that end in "
              ".failed.txt in /o/");
}

TEST(NoticeText, StaysShortForALongRun) {
    std::vector<Entry> entries;
    for (int movie = 0; movie < 1000; ++movie) {
        entries.push_back(entry_for(std::to_string(movie)));
    }
    const Message message = message_on(entries, true);
    EXPECT_EQ(message.summary, "1000 movies: there were problems");
    EXPECT_NE(message.body.find("... and 996 more\n"), std::string::npos) << message.body;
    EXPECT_LT(message.body.size(), 200U);
}

TEST(NoticeText, EscapesMarkupOnlyWhereItIsRead) {
    Entry entry = entry_for("x");
    entry.name = "<b>&\n.avi";
    entry.note = "/a & b/<i>\n.failed.txt";
    EXPECT_EQ(message_on({entry}, true).summary, "<b>& .avi");
    EXPECT_EQ(message_on({entry}, true).body,
              "Failed.\nFor details, see /a &amp; b/&lt;i&gt; .failed.txt");
    EXPECT_EQ(message_on({entry}, false).body, "Failed.\nFor details, see /a & b/<i> .failed.txt");
}

TEST(NoticeText, PointsToTheConsoleWhereThereIsNoNote) {
    Entry entry = entry_for("x");
    entry.note.clear();
    EXPECT_EQ(message_on({entry}, true).body, "Failed.\nFor details, see the program's console.");
}

TEST(NoticeText, KeepsTheLatestOfAStep) {
    std::vector<Entry> entries{kConversion, kSubtitles};
    Entry again = kConversion;
    again.sentence = "Again.";
    add(entries, again);
    EXPECT_EQ(entries, (std::vector{kSubtitles, again}));
    EXPECT_EQ(count_movies(entries), 1U);
}

}  // namespace
}  // namespace notices
