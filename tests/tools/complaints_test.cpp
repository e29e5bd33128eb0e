#include "tools/complaints.h"

#include <gtest/gtest.h>

TEST(Complaints, AreTheLinesThatStartWithAToolsName) {
    EXPECT_EQ(Complaints().in("frame= 1 bitrate= 2\rffmpeg: no room\nStream #0\n"
                              "MP4Box: no text\n see ffmpeg: there\n"),
              "ffmpeg: no room\nMP4Box: no text\n");
}

TEST(Complaints, AreTheSameInEverySplit) {
    const std::string text = "a\rffmpeg: first\nb\nffmpeg: second\n";
    for (std::size_t at = 0; at <= text.size(); ++at) {
        Complaints complaints;
        const std::string first = complaints.in(text.substr(0, at));
        EXPECT_EQ(first + complaints.in(text.substr(at)), "ffmpeg: first\nffmpeg: second\n") << at;
    }
}

TEST(Complaints, KeepOnlyTheStartOfAnEndlessLine) {
    Complaints complaints;
    EXPECT_EQ(complaints.in("ffmpeg: "), "");
    for (int piece = 0; piece < 100; ++piece)
        EXPECT_EQ(complaints.in(std::string(1000, 'x')), "");
    EXPECT_EQ(complaints.in("\n").size(), 8192U + 1);
}
