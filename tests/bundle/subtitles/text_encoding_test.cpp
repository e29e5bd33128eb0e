#include "subtitles/text_encoding.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

std::string text_of(std::string_view bytes) {
    const auto text = text_in_utf8(bytes);
    return text ? *text : "refused";
}

TEST(TextEncoding, KeepsUtf8AndDropsItsMark) {
    EXPECT_EQ(text_of("Za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87"), "Za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87");
    EXPECT_EQ(text_of("\xEF\xBB\xBFplain"), "plain");
    EXPECT_EQ(text_of(""), "");
}

TEST(TextEncoding, ReadsUtf16BothWaysWithAndWithoutMark) {
    using namespace std::string_literals;
    const std::string little = "a\0-\0-\0>\0\x42\x01"s;
    const std::string big = "\0a\0-\0-\0>\x01\x42"s;
    for (const std::string& bytes : {"\xFF\xFE" + little, "\xFE\xFF" + big, little, big}) {
        EXPECT_EQ(text_of(bytes), "a-->\xC5\x82");
    }
}

TEST(TextEncoding, DistinguishesCentralFromWesternEuropeByTheLetters) {
    EXPECT_EQ(text_of("Ksi\xB9\xBF\xEA nie wr\xF3\x63i ju\xBF do zamku."),
              "Ksi\xC4\x85\xC5\xBC\xC4\x99 nie wr\xC3\xB3\x63i ju\xC5\xBC do zamku.");
    EXPECT_EQ(text_of("Er h\xE4ngt dort, neben der T\xFCr. \x84Sch\xF6n\x93, wei\xDF."),
              "Er h\xC3\xA4ngt dort, neben der T\xC3\xBCr. \xE2\x80\x9ESch\xC3\xB6n\xE2\x80\x9C, "
              "wei\xC3\x9F.");
}

TEST(TextEncoding, CountsLettersOfForeignWordsForLess) {
    // "đ" and "č" would be "ð" and "è" in Western Europe: "gospoðo".
    EXPECT_EQ(text_of("Dobar dan, gospo\xF0o. \xC8"
                      "ekali smo cijelu no\xE6, \x9Eivi i zdravi."),
              "Dobar dan, gospo\xC4\x91o. \xC4\x8C"
              "ekali smo cijelu no\xC4\x87, \xC5\xBEivi i "
              "zdravi.");
}

TEST(TextEncoding, KnowsBalticSetsThatTheDetectorDoesNot) {
    EXPECT_EQ(
        text_of("Laba diena, ponia \xDEukauskiene. I\xF0vyksta u\xFE penki\xF8 minu\xE8i\xF8."),
        "Laba diena, ponia \xC5\xBDukauskiene. I\xC5\xA1vyksta u\xC5\xBE penki\xC5\xB3 "
        "minu\xC4\x8Di\xC5\xB3.");
}

TEST(TextEncoding, DistinguishesUkrainianFromRussianKoi8) {
    EXPECT_EQ(
        text_of("\xF7\xA6\xCE \xA7\xA7 \xC2\xC1\xDE\xC9\xD7."),
        "\xD0\x92\xD1\x96\xD0\xBD \xD1\x97\xD1\x97 \xD0\xB1\xD0\xB0\xD1\x87\xD0\xB8\xD0\xB2.");
}

TEST(TextEncoding, RecognisesLatin9ByALigatureInAWord) {
    EXPECT_EQ(text_of("Un v\xBDu sinc\xE8re"), "Un v\xC5\x93u sinc\xC3\xA8re");
}

TEST(TextEncoding, LooksOnlyAtLinesBeyondAscii) {
    std::string text;
    for (int line = 0; line < 20'000; ++line) {
        text += "nothing but plain letters\n";
    }
    EXPECT_EQ(text_of(text + "\xCE\xED \xEF\xF0\xE8\xF8\xB8\xEB."),
              text + "\xD0\x9E\xD0\xBD \xD0\xBF\xD1\x80\xD0\xB8\xD1\x88\xD1\x91\xD0\xBB.");
}

TEST(TextEncoding, KeepsUtf8WithABrokenCharacter) {
    EXPECT_EQ(
        text_of(
            "\xC3\xA9\xC3\xA8\xC3\xA0\xC3\xB9\xC3\xBB\xC3\xAE\xC3\xB4\xC3\xAA\xC3\xAB\xC3\xAF\xC3"),
        "\xC3\xA9\xC3\xA8\xC3\xA0\xC3\xB9\xC3\xBB\xC3\xAE\xC3\xB4\xC3\xAA\xC3\xAB\xC3\xAF\xEF\xBF"
        "\xBD");
}

TEST(TextEncoding, LeavesOutNulAtTheEnd) {
    using namespace std::string_literals;
    EXPECT_EQ(text_of("a\xC3\xA9\0"s), "a\xC3\xA9");
    EXPECT_EQ(text_of("Er h\xE4ngt dort\0\0"s), "Er h\xC3\xA4ngt dort");
    EXPECT_EQ(text_of("\xFF\xFE"
                      "a\0\0\0"s),
              "a");
    EXPECT_EQ(text_of("\xFE\xFF\0a\0\0\0"s), "a");
}

TEST(TextEncoding, RefusesBytesThatAreNotText) {
    EXPECT_EQ(text_of(std::string("a\0b\xE9", 4)), "refused");
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
