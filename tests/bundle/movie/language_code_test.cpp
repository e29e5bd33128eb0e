#include "movie/language_code.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(LanguageCode, IsTheOneThatMp4FilesHave) {
    EXPECT_EQ(mp4_language("deu"), "deu");
    EXPECT_EQ(mp4_language("ger"), "deu");
    EXPECT_EQ(mp4_language("fre"), "fra");
    EXPECT_EQ(mp4_language("wel"), "cym");
    EXPECT_EQ(mp4_language("zxx"), "zxx");
    EXPECT_EQ(mp4_language("ENG"), "eng");
}

TEST(LanguageCode, IsFoundForTwoLettersAndForRegions) {
    EXPECT_EQ(mp4_language("de"), "deu");
    EXPECT_EQ(mp4_language("pt-BR"), "por");
    EXPECT_EQ(mp4_language("eng_GB"), "eng");
}

TEST(LanguageCode, IsTheFirstOfAList) {
    EXPECT_EQ(mp4_language("dut,eng"), "nld");
}

TEST(LanguageCode, IsUndeterminedForWhatIsNone) {
    for (const char* text : {"", "x", "English", "xx", "12", "--", "\xC3\xA9t\xC3\xA9", "und"}) {
        EXPECT_EQ(mp4_language(text), "und") << text;
    }
}

}  // namespace
}  // namespace bundle
