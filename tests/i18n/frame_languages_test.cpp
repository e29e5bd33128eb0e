// Texts in the frame's language.

#include "support/frame_test.h"

namespace {

class FrameLanguages : public FrameTest {};

}  // namespace

TEST_F(FrameLanguages, AreFilledByTheConstructorsCallOnly) {
    start();
    const wxArrayString native = frame->languages;
    const wxArrayString english = frame->languagesEnglish;
    ASSERT_EQ(native.size(), 9U);
    for (const int fill : {0, 2, -1}) {
        EXPECT_EQ(frame->Translate("tointialize", fill), "");
        EXPECT_EQ(frame->languages, native);
        EXPECT_EQ(frame->languagesEnglish, english);
    }
    EXPECT_EQ(frame->Translate("tointialize", 1), "");
    EXPECT_EQ(frame->languages.size(), 18U);
    EXPECT_EQ(frame->languagesEnglish.size(), 18U);
}

TEST_F(FrameLanguages, FollowTheSettingsAtEveryCall) {
    start();
    EXPECT_EQ(frame->Translate("panelConvert", 0), "Convert");
    frame->config_write("Language", "Italiano");
    EXPECT_EQ(frame->Translate("panelConvert", 0), "Converti");
    frame->config_write("Language", "English");
    frame->config_write("Optimize", "2");
    EXPECT_EQ(frame->Translate("buttonConvert", 0), "3: Convert the Movie(s) to my iPad!");
}
