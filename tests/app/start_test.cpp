// From the start of the program to the window, with different settings.

#include <wx/display.h>
#include <wx/utils.h>

#include "support/frame_test.h"

namespace {

class Start : public FrameTest {
  protected:
    ~Start() override { wxSetEnv("LANG", "C.UTF-8"); }
};

}  // namespace

TEST_F(Start, ShowsACentredWindowOfFixedSize) {
    start();
    ASSERT_TRUE(wait_until([this] { return frame->GetSize() == wxSize(770, 385); }));
    EXPECT_EQ(frame->GetTitle(), "Vantreo");
    EXPECT_FALSE(frame->HasFlag(wxRESIZE_BORDER));
    EXPECT_FALSE(frame->HasFlag(wxMAXIMIZE_BOX));
    EXPECT_TRUE(frame->HasFlag(wxMINIMIZE_BOX));
    const wxRect screen = wxDisplay(frame).GetClientArea();
    ASSERT_TRUE(wait_until([&] {
        const wxRect window = frame->GetRect();
        return std::abs((window.x + window.width / 2) - (screen.x + screen.width / 2)) <= 2 &&
               std::abs((window.y + window.height / 2) - (screen.y + screen.height / 2)) <= 2;
    })) << frame->GetRect().x
        << "," << frame->GetRect().y;
}

TEST_F(Start, KnowsItsLanguages) {
    start();
    const wxString native[] = {"English",         L"Fran\u00e7ais",    L"Espa\u00f1ol",
                               "Italiano",        "Deutsch",           "Polski",
                               L"Portugu\u00eas", L"Rom\u00e2n\u0103", L"русский язык"};
    const wxString english[] = {"English", "French",     "Spanish",  "Italian", "German",
                                "Polish",  "Portuguese", "Romanian", "Russian"};
    EXPECT_EQ(frame->languages, wxArrayString(9, native));
    EXPECT_EQ(frame->languagesEnglish, wxArrayString(9, english));
    EXPECT_FALSE(frame->reservedFlag);
    EXPECT_EQ(frame->dialogParent, frame);
}

TEST_F(Start, FollowsAFrenchSystem) {
    wxSetEnv("LANG", "fr_FR.UTF-8");
    start();
    EXPECT_EQ(frame->defaultLanguage, L"Fran\u00e7ais");
    EXPECT_EQ(frame->currentLanguage, L"Fran\u00e7ais");
    EXPECT_EQ(stored("Language"), L"Fran\u00e7ais");
}

TEST_F(Start, FallsBackToEnglishForAnUnsupportedLanguage) {
    wxSetEnv("LANG", "ja_JP.UTF-8");
    start();
    EXPECT_EQ(frame->defaultLanguage, "English");
    EXPECT_EQ(stored("Language"), "English");
}

TEST_F(Start, PrefersTheSavedLanguage) {
    wxSetEnv("LANG", "fr_FR.UTF-8");
    setting("Language", "Deutsch");
    start();
    EXPECT_EQ(frame->defaultLanguage, L"Fran\u00e7ais");
    EXPECT_EQ(frame->currentLanguage, "Deutsch");
    EXPECT_EQ(stored("Language"), "Deutsch");
}

TEST_F(Start, MakesTheSettingsFolderOfANewHome) {
    wxString before;
    wxGetEnv("XDG_CONFIG_HOME", &before);
    const wxString folder = out.file("new/config");
    wxSetEnv("XDG_CONFIG_HOME", folder);
    start();
    close();
    wxSetEnv("XDG_CONFIG_HOME", before);
    EXPECT_TRUE(file_text(folder + "/Vantreo.ini").Contains("Language=English"));
}

TEST_F(Start, HasNoCurrentLanguageForAnUnknownName) {
    setting("Language", "Klingon");
    start();
    EXPECT_EQ(frame->currentLanguage, "");
    EXPECT_EQ(frame->Translate("panelAbout", 0), "About");
}
