#include "subtitles/ass_script.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(AssText, TurnsMarkupIntoCodes) {
    EXPECT_EQ(ass_text("<i>a</i> <B>b</B>\n<u>c</u>"),
              "{\\i1}a{\\i0} {\\b1}b{\\b0}\\N{\\u1}c{\\u0}");
}

TEST(AssText, KeepsColoursSizesAndFacesOfFonts) {
    EXPECT_EQ(ass_text("<font color=\"#12aBfe\" size=20 face='Courier New'>x</font>y"),
              "{\\1c&HFEAB12&}{\\fs20}{\\fnCourier New}x{\\1c}{\\fs16}{\\fnArial}y");
    EXPECT_EQ(ass_text("<FONT COLOR=Yellow>x</FONT>"), "{\\1c&H00FFFF&}x{\\1c}");
    EXPECT_EQ(ass_text("<font face='a\nDialogue: 0'>x</font>"), "x");
    EXPECT_EQ(ass_text("<font color=nonesuch>x</font></font>"), "x");
}

TEST(AssText, RestartsAllStylesAtEachChange) {
    EXPECT_EQ(ass_text("<i>a<b>b</b></i>c"), "{\\i1}a{\\i0}{\\i1}{\\b1}b{\\b0}{\\i0}{\\i1}{\\i0}c");
    EXPECT_EQ(ass_text("<font color=red>a<font color=lime>b</font>c</font>"),
              "{\\1c&H0000FF&}a{\\1c}{\\1c&H0000FF&}{\\1c&H00FF00&}b{\\1c}{\\1c&H0000FF&}c{\\1c}");
}

TEST(AssText, EndsOnlyWhatHasBegun) {
    EXPECT_EQ(ass_text("</i>a</font>"), "a");
    EXPECT_EQ(ass_text("<i>a<b>b</i>c"), "{\\i1}a{\\i0}{\\i1}{\\b1}b{\\b0}{\\i0}{\\b1}c");
}

TEST(AssText, BeginsANewLineAtABreak) {
    EXPECT_EQ(ass_text("one<br>two<BR />three<br/>\nfour"), "one\\Ntwo\\Nthree\\Nfour");
}

TEST(AssText, LeavesOutOtherTagsAndCodes) {
    EXPECT_EQ(ass_text("{\\an8}<c.x>top</c><v Ann>!"), "top!");
}

TEST(AssText, KeepsWhatOnlyLooksLikeMarkup) {
    for (const char* text : {"a < b", "<3", "<-", "a <b", "{x}", "&amp;", "<", "{", "\\x"}) {
        EXPECT_EQ(ass_text(text), text);
    }
}

TEST(AssText, KeepsWhatAssWouldTakeForACodeApart) {
    EXPECT_EQ(ass_text("C:\\New"), "C:\\\xE2\x81\xA0New");
    EXPECT_EQ(ass_text("{\\open"), "{\xE2\x81\xA0\\open");
}

TEST(AssScript, RoundsTimesToHundredths) {
    const std::string script = ass_script({{3'723'004, 36'000'006, "a"}});
    EXPECT_TRUE(script.ends_with("Dialogue: 0,1:02:03.00,10:00:00.01,Default,,0,0,0,,a\n"))
        << script;
}

}  // namespace
}  // namespace bundle
