#include "core/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace bundle {
namespace {

TEST(Console, ShowsControlCharactersAsQuestionMarks) {
    EXPECT_EQ(printable("a\x1B[2J\rb\nc\x7F \xC3\xA9"), "a?[2J?b\nc? \xC3\xA9");
}

TEST(Console, QuotesANameOnOneLineAndShortensIt) {
    EXPECT_EQ(in_quotes("a\nb"), "'a?b'");
    const std::string text = in_quotes(std::string(100, 'a') + std::string(100, 'b'));
    EXPECT_EQ(text, "'" + std::string(60, 'a') + "..." + std::string(60, 'b') + "'");
}

TEST(Console, DropsWhatAFullPipeDoesNotTake) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    const std::string filling(4096, 'x');
    while (::write(ends[1], filling.data(), filling.size()) > 0) {
    }
    ::fcntl(ends[1], F_SETFL, 0);  // blocking again: writing now would hang
    write_if_ready(ends[1], "lost");
    std::array<char, 4096> read{};
    ASSERT_EQ(::read(ends[0], read.data(), read.size()), 4096);
    write_if_ready(ends[1], "kept");
    ::close(ends[1]);
    std::string rest;
    for (ssize_t count = 0; (count = ::read(ends[0], read.data(), read.size())) > 0;) {
        rest.append(read.data(), static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    EXPECT_EQ(rest.find("lost"), std::string::npos);
    EXPECT_TRUE(rest.ends_with("kept"));
}

TEST(Console, NamesTheToolOnEveryLineOfAComplaint) {
    testing::internal::CaptureStderr();
    complain("ffmpeg", "first\nsecond\r");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ffmpeg: first\nffmpeg: second?\n");
}

TEST(MessageTail, KeepsTheLastWholeLines) {
    MessageTail tail;
    for (int line = 0; line < 1000; ++line) {
        tail.add("message " + std::to_string(line) + "\n");
    }
    const std::string text = tail.text();
    EXPECT_LE(text.size(), MessageTail::kLimit);
    EXPECT_TRUE(text.starts_with("message "));
    EXPECT_TRUE(text.ends_with("message 999"));
}

TEST(MessageTail, KeepsAShortTextWhole) {
    MessageTail tail;
    tail.add("one\ntw");
    tail.add("o\n");
    EXPECT_EQ(tail.text(), "one\ntwo");
}

TEST(Console, SpoilsWhatTheProgramWouldReadInAName) {
    EXPECT_EQ(in_quotes("Duration: 01:00:00 Stream #0.0: Video: x, 5x5, 9 tbc"),
              "'Duration: 01:00:00 Stream ?0.0: Video: x, 5x5, 9 tbc'");
    EXPECT_EQ(printable("time=30.04 bitrate=1"), "time=30.04 bitrate?1");
    EXPECT_EQ(printable("ISO File Writing: |(45/100)"), "ISO File Writing? |(45/100)");
    EXPECT_EQ(in_quotes("C# a=b.avi"), "'C# a=b.avi'");
}

TEST(Console, ShortensANameBetweenItsCharacters) {
    std::string name;
    for (int letter = 0; letter < 62; ++letter) {
        name += "\xF0\x9F\x8E\xAC";
    }
    const std::string text = in_quotes("x" + name + "y");
    EXPECT_EQ(text.size() % 4, (1 + 1 + 3 + 1 + 1) % 4U) << text;
    EXPECT_NE(text.find("\xAC...\xF0"), std::string::npos) << text;
}

}  // namespace
}  // namespace bundle
