#include "base/utf8.h"

#include <gtest/gtest.h>

#include <string>

#include "support/folder.h"

TEST(Utf8, ReadsWellFormedText) {
    EXPECT_EQ(text_from_utf8(""), "");
    EXPECT_EQ(text_from_utf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC"), L"a\u00e9\u20ac\U0001F3AC");
    const std::string nul("a\0b", 3);
    EXPECT_EQ(text_from_utf8(nul).length(), 3U);
    EXPECT_EQ(text_from_utf8("\xF4\x8F\xBF\xBF").length(), 1U) << "the last character";
}

TEST(Utf8, RejectsWhatTheToolkitWouldFailOnLater) {
    const char* const bad[] = {"a\xE9",              // Latin-1
                               "\xC3",               // truncated
                               "\xC0\xAF",           // overlong
                               "\xE0\x8F\x88",       // overlong
                               "\xED\xB8\x96",       // a surrogate
                               "\xF4\xBC\xAA\xAD"};  // beyond the last character
    for (const char* bytes : bad)
        EXPECT_EQ(text_from_utf8(bytes), "") << testing::PrintToString(bytes);
}
