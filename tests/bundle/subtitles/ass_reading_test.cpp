#include "subtitles/ass_reading.h"

#include <gtest/gtest.h>

#include "subtitles/styled_text.h"

namespace bundle {
namespace {

const std::string kHead =
    "[Script Info]\nScriptType: v4.00+\n\n[V4+ Styles]\n"
    "Format: Name, Fontname, Fontsize, PrimaryColour, BackColour, Bold, Italic, Underline\n"
    "Style: Default,Arial,16,&Hffffff,&H0,0,0,0\n"
    "Style: Sign,Arial,40,&H0000FFFF,&H0,-1,0,0\n"
    "Style: Dark,Arial,40,&H00300000,&H0,0,0,0\n\n"
    "[Events]\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n";

std::string line(const std::string& text, const std::string& style = "Default",
                 const std::string& times = "0:00:01.00,0:00:02.50") {
    return "Dialogue: 0," + times + "," + style + ",,0,0,0,," + text + "\n";
}

/// What the only cue shows; "-" when there is none.
PlainText shown(const std::string& text, const std::string& style = "Default",
                bool has_comments = true) {
    const auto cues = read_ass(kHead + line(text, style), has_comments);
    return cues.size() == 1 ? take_apart(cues[0].text) : PlainText{"-", {}};
}

TEST(AssReading, FindsTimesAndTexts) {
    const auto cues = read_ass(kHead + line("One, two") + "Comment: 0,x\r\n" +
                                   line("Three\r", "Default", "9:59:58.07,10:00:00.00"),
                               true);
    EXPECT_EQ(cues,
              (std::vector<Cue>{{1000, 2500, "One, two"}, {35'998'070, 36'000'000, "Three"}}));
}

TEST(AssReading, KnowsTimesBeforeTheStart) {
    const auto cues = read_ass(kHead + line("x", "Default", "0:00:-1.-20,0:00:00.92"), true);
    EXPECT_EQ(cues, (std::vector<Cue>{{-1200, 920, "x"}}));
}

TEST(AssReading, KeepsLinesAndBlanks) {
    EXPECT_EQ(shown("one\\Ntwo\\nthree\\hfour").text, "one\ntwo\nthree four");
    EXPECT_EQ(shown("a\\Nb\\N\\N").text, "a\nb");
}

TEST(AssReading, KeepsStylesWithinLines) {
    const PlainText plain = shown("a{\\i1}b{\\i0\\b700}c{\\b0\\u1}d{\\r}e{\\c&H0000FF&}f{\\c}g");
    EXPECT_EQ(plain.text, "abcdefg");
    EXPECT_EQ(plain.runs, (std::vector<StyledRun>{{1, 2, {false, true, false, 0xFFFFFF}},
                                                  {2, 3, {true, false, false, 0xFFFFFF}},
                                                  {3, 4, {false, false, true, 0xFFFFFF}},
                                                  {5, 6, {false, false, false, 0xFF0000}}}));
}

TEST(AssReading, KnowsTheStylesOfLines) {
    EXPECT_EQ(shown("a", "Sign").runs,
              (std::vector<StyledRun>{{0, 1, {true, false, false, 0xFFFF00}}}));
    EXPECT_EQ(shown("a{\\rDefault}b", "Sign").runs.size(), 1U);
    EXPECT_TRUE(shown("a", "Nobody").runs.empty());
    EXPECT_TRUE(shown("a", "Dark").runs.empty());
}

TEST(AssReading, LeavesOutPlacesMovementsAndDrawings) {
    EXPECT_EQ(shown("{\\an8\\pos(10,20)\\fs72\\fad(1,2)\\blur3\\bord2\\clip(1,2,3,4)}Text").text,
              "Text");
    EXPECT_TRUE(shown("{\\bord2\\iclip(1,2,3,4)\\ud}Text").runs.empty());
    EXPECT_EQ(shown("{\\p1}m 0 0 l 100 0 100 100{\\p0}").text, "-");
    EXPECT_EQ(shown("{\\p1}m 0 0{\\p0}Text").text, "Text");
    EXPECT_EQ(shown("{\\b1} \\N ").text, "-");
}

TEST(AssReading, DistinguishesCommentsFromBraces) {
    EXPECT_EQ(shown("a{note}b").text, "ab");
    EXPECT_EQ(shown("a{note}b", "Default", false).text, "a{note}b");
    EXPECT_EQ(shown("a{b").text, "a{b");
    EXPECT_EQ(shown("\\{x\\} \\q \\\xE2\\").text, "{x} \\q \\\xE2\\");
}

TEST(AssReading, ShowsTheSameThingOnce) {
    EXPECT_EQ(read_ass(kHead + line("a") + line("a") + line("b"), true).size(), 2U);
}

TEST(AssReading, SkipsWhatItDoesNotKnow) {
    const std::string script = kHead + line("{\\i1}One") + line("Two", "Sign");
    for (std::size_t length = 0; length < script.size(); ++length) {
        EXPECT_LE(read_ass(script.substr(0, length), true).size(), 2U);
    }
    EXPECT_TRUE(read_ass("Dialogue: 0,x,0:00:01.00,D,,0,0,0,,t\nDialogue:\n", true).empty());
}

}  // namespace
}  // namespace bundle
