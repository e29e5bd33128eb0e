#include "subtitles/script_text.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(ScriptText, IsTakenAsItIsInUtf8) {
    for (const char* text : {"", "a", "a\nb\n", "g\xC4\x99\xC5\x9Bl\n"}) {
        const auto readable = readable_text(text);
        ASSERT_TRUE(readable);
        EXPECT_EQ(readable->text, text);
        EXPECT_EQ(readable->damaged_lines, 0);
    }
}

TEST(ScriptText, LosesItsDamagedLines) {
    const auto readable = readable_text("a\ng\xC4\x99\xC5\x9B\nb\xFF\xFE\nc");
    ASSERT_TRUE(readable);
    EXPECT_EQ(readable->text, "a\ng\xC4\x99\xC5\x9B\nc");
    EXPECT_EQ(readable->damaged_lines, 1);
}

TEST(ScriptText, IsFoundInAnotherEncoding) {
    const auto readable = readable_text("Za\xBF\xF3\xB3\xE6 g\xEA\x9Cl\xB9 ja\x9F\xF1, nie wiem\n");
    ASSERT_TRUE(readable);
    EXPECT_EQ(readable->text,
              "Za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87 g\xC4\x99\xC5\x9Bl\xC4\x85 "
              "ja\xC5\xBA\xC5\x84, nie wiem\n");
}

TEST(ScriptText, IsRefusedWhereItIsNone) {
    EXPECT_FALSE(readable_text(std::string("\xFF\0\xFE\0\x01", 5)));
}

}  // namespace
}  // namespace bundle
