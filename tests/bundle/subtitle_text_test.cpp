#include "subtitle_text.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

const std::string kCue = "1\n00:00:01,000 --> 00:00:02,500\nZa\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87\n";

TEST(SubtitleText, IsReadWithAndWithoutByteOrderMark) {
    const TemporaryFolder folder;
    const auto plain = read_subtitles(folder.write("plain.srt", kCue));
    ASSERT_TRUE(plain);
    EXPECT_EQ(*plain, kCue);
    const auto marked = read_subtitles(folder.write("marked.srt", "\xEF\xBB\xBF" + kCue));
    ASSERT_TRUE(marked);
    EXPECT_EQ(*marked, kCue);
}

TEST(SubtitleText, IsRefusedWhenItIsNotUtf8) {
    const TemporaryFolder folder;
    EXPECT_FALSE(read_subtitles(folder.write("latin.srt", kCue + "caf\xE9\n")));
    EXPECT_FALSE(read_subtitles(folder.write("utf16.srt", std::string("\xFF\xFE"
                                                                      "1\0\n\0",
                                                                      6))));
}

TEST(SubtitleText, IsRefusedWithoutCues) {
    const TemporaryFolder folder;
    EXPECT_FALSE(read_subtitles(folder.write("empty.srt", "")));
    EXPECT_FALSE(read_subtitles(folder.write("prose.srt", "This --> is no subtitle.\n")));
    EXPECT_FALSE(read_subtitles(folder / "missing.srt"));
    EXPECT_FALSE(read_subtitles(folder.path().string()));
}

TEST(SubtitleText, CountsCuesWithAnyLineEnd) {
    for (const char* end : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (const char* line : {"1", "00:00:01,000 --> 00:00:02,500", "One", "", "2",
                                 " 0:00:03.5-->0:00:04.25  X1:0 Y1:0", "Two"}) {
            text.append(line).append(end);
        }
        EXPECT_EQ(count_cues(text), 2);
    }
}

TEST(SubtitleText, CountsACueInTheLastLineWithoutEnd) {
    EXPECT_EQ(count_cues("00:00:01,000 --> 00:00:02,500"), 1);
}

TEST(Utf8Text, TakesAllWellFormedLengths) {
    EXPECT_TRUE(is_utf8_text(""));
    EXPECT_TRUE(is_utf8_text("a\xC2\x80\xDF\xBF"));
    EXPECT_TRUE(is_utf8_text("\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"));
    EXPECT_TRUE(is_utf8_text("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"));
}

TEST(Utf8Text, RefusesMalformedSequences) {
    for (const char* text :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xE2\x82", "\xF0\x9F\x98",
          "\xC3(", "\xE2\x82(", "\xF0\x9F\x98("}) {
        EXPECT_FALSE(is_utf8_text(text)) << testing::PrintToString(text);
    }
    EXPECT_FALSE(is_utf8_text(std::string_view("a\0b", 3)));
}

}  // namespace
}  // namespace bundle
