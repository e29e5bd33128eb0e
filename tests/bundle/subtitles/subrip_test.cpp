#include "subtitles/subrip.h"

#include <gtest/gtest.h>

#include <ostream>

namespace bundle {

static void PrintTo(const Cue& cue, std::ostream* stream) {
    *stream << cue.start_ms << "-" << cue.end_ms << " " << cue.text;
}

namespace {

using Cues = std::vector<Cue>;

TEST(SubRip, IsReadWithAnyLineEnd) {
    for (const char* end : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (const char* line : {"1", "00:00:01,000 --> 00:00:02,500", "One", "two", "", "2",
                                 " 0:00:03.5-->0:00:04.25  X1:0 Y1:0", "Three"}) {
            text.append(line).append(end);
        }
        EXPECT_EQ(read_subrip(text), (Cues{{1000, 2500, "One\ntwo"}, {3500, 4250, "Three"}}));
    }
}

TEST(SubRip, TakesTimesBeyondAnHour) {
    EXPECT_EQ(read_subrip("101:59:59,999 --> 102:00:00,001\nLate"),
              (Cues{{367'199'999, 367'200'001, "Late"}}));
}

TEST(SubRip, KeepsANumberThatIsText) {
    EXPECT_EQ(read_subrip("1\n00:00:01,000 --> 00:00:02,000\n42\n\n2\n"
                          "00:00:03,000 --> 00:00:04,000\n43\n"),
              (Cues{{1000, 2000, "42"}, {3000, 4000, "43"}}));
}

TEST(SubRip, NeedsNoNumbersAndKeepsTextAfterAnEmptyLine) {
    EXPECT_EQ(read_subrip("00:00:01,000 --> 00:00:02,000\nOne\n\nmore\n\n"
                          "00:00:03,000 --> 00:00:04,000\nTwo"),
              (Cues{{1000, 2000, "One\nmore"}, {3000, 4000, "Two"}}));
}

TEST(SubRip, SkipsEverythingButCues) {
    EXPECT_TRUE(read_subrip("").empty());
    EXPECT_TRUE(read_subrip("a --> b\n1:2 --> 3\n--> 00:00:01,000\n").empty());
    EXPECT_TRUE(read_subrip("00:00:01,000 --> 00:00:02,000\n \n").empty());
    EXPECT_TRUE(read_subrip("-1:00:01,000 --> 00:00:02,000\nText").empty());
}

TEST(SubRip, LeavesOutNumbersInFilesWithEmptyLinesAfterAllLines) {
    const Cues cues{{1000, 2000, "One\ntwo"}, {3000, 4000, "42"}, {5000, 6000, "End"}};
    for (const char* end : {"\n\n", "\r\r\n", "\r\r\n\r\r\n", "\n \n"}) {
        std::string text;
        for (const char* line : {"1", "00:00:01,000 --> 00:00:02,000", "One", "two", "", "2",
                                 "00:00:03,000 --> 00:00:04,000", "42", "", "3",
                                 "00:00:05,000 --> 00:00:06,000", "End", ""}) {
            text.append(line).append(end);
        }
        EXPECT_EQ(read_subrip(text), cues) << testing::PrintToString(end);
    }
}

TEST(SubRip, KeepsANumberThatStandsAloneInTheText) {
    EXPECT_EQ(read_subrip("00:00:01,000 --> 00:00:02,000\nHow many?\n\n42\n\n"
                          "00:00:03,000 --> 00:00:04,000\nSo many.\n"),
              (Cues{{1000, 2000, "How many?\n42"}, {3000, 4000, "So many."}}));
}

TEST(SubRip, LeavesOutByteOrderMarksAndSubAroundLines) {
    EXPECT_EQ(read_subrip("\xEF\xBB\xBF"
                          "1\n00:00:01,000 --> 00:00:02,000\nOne\n\n"
                          "\x1A\n\xEF\xBB\xBF"
                          "1\n00:00:03,000 --> 00:00:04,000\nTwo\n\x1A"),
              (Cues{{1000, 2000, "One"}, {3000, 4000, "Two"}}));
}

}  // namespace
}  // namespace bundle
