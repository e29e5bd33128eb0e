// The notebook after the start.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/dnd.h>
#include <wx/gauge.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include "input/DnDtextMovies.h"
#include "input/DnDtextOutput.h"
#include "support/frame_test.h"
#include "support/html_links.h"

namespace {

class Layout : public FrameTest {};

}  // namespace

TEST_F(Layout, HasThreePagesAndShowsTheFirst) {
    start();
    ASSERT_EQ(frame->notebook->GetPageCount(), 3U);
    EXPECT_EQ(frame->notebook->GetPage(0), frame->panelConvert);
    EXPECT_EQ(frame->notebook->GetPage(1), frame->panelOptions);
    EXPECT_EQ(frame->notebook->GetPage(2), frame->panelAbout);
    EXPECT_EQ(frame->notebook->GetSelection(), 0);
    EXPECT_EQ(frame->notebook->GetPageText(0), "Convert");
    EXPECT_EQ(frame->notebook->GetPageText(1), "Options");
    EXPECT_EQ(frame->notebook->GetPageText(2), "About");
    EXPECT_FALSE(frame->checkingVersion);
}

TEST_F(Layout, PlacesTheControls) {
    start();
    const int button = wxButton::GetDefaultSize(frame->panelConvert).y;
    EXPECT_GT(button, 10);
    EXPECT_LE(button, 30) << "the status line stands 30 pixels below the Convert button's top";
    EXPECT_EQ(frame->textMovies->GetRect(), wxRect(7, 18, 410, 100));
    EXPECT_EQ(frame->textOutput->GetRect(), wxRect(10, 129, 405, 20));
    EXPECT_EQ(frame->buttonMovies->GetRect(), wxRect(425, 20, 285, 25));
    EXPECT_EQ(frame->buttonOutput->GetRect(), wxRect(425, 128, 265, button));
    EXPECT_EQ(frame->buttonConvert->GetRect(), wxRect(10, 165, 700, button));
    EXPECT_EQ(frame->boxProgress->GetRect(), wxRect(10, 215, 700, 60));
    EXPECT_EQ(frame->labelStatus->GetRect(), wxRect(10, 195, 700, 20));
    EXPECT_EQ(frame->labelPercent->GetPosition(), wxPoint(665, 224));
    EXPECT_EQ(frame->labelElapsed->GetPosition(), wxPoint(20, 245));
    EXPECT_EQ(frame->labelElapsedTime->GetPosition(), wxPoint(150, 245));
    EXPECT_EQ(frame->labelRemaining->GetPosition(), wxPoint(480, 245));
    EXPECT_EQ(frame->labelRemainingTime->GetPosition(), wxPoint(590, 245));
    EXPECT_EQ(frame->labelLanguage->GetPosition(), wxPoint(20, 28));
    EXPECT_EQ(frame->comboboxLanguages->GetPosition(), wxPoint(160, 25));
    EXPECT_EQ(frame->htmlTranslations->GetRect(), wxRect(295, 10, 400, 60));
    EXPECT_EQ(frame->labelOptimize->GetPosition(), wxPoint(20, 75));
    EXPECT_EQ(frame->comboboxOptimize->GetRect(), wxRect(160, 72, 210, 22));
    EXPECT_EQ(frame->htmlSubtitle->GetRect(), wxRect(380, 65, 200, 25));
    EXPECT_EQ(frame->checkboxOverwrite->GetRect(), wxRect(20, 120, 700, 20));
    EXPECT_EQ(frame->checkboxHowToMove->GetRect(), wxRect(20, 140, 700, 20));
    EXPECT_EQ(frame->htmlAbout->GetRect(), wxRect(0, 7, 720, 200));
    EXPECT_EQ(frame->buttonDonate->GetRect(), wxRect(280, 225, 160, 35));
}

TEST_F(Layout, GivesTheGaugeThePercentLabelsSizeUntilTheFirstRun) {
    start();
    EXPECT_EQ(frame->gaugeProgress->GetRect(),
              wxRect(wxPoint(20, 225), frame->labelPercent->GetSize()));
    EXPECT_EQ(frame->gaugeProgress->GetRange(), 100);
    frame->layout_converting(0);
    EXPECT_EQ(frame->gaugeProgress->GetRect(), wxRect(20, 225, 633, 15));
}

TEST_F(Layout, CaptionsTheControls) {
    start();
    EXPECT_EQ(frame->buttonMovies->GetLabel(), "1: Select movie(s) to convert...");
    EXPECT_EQ(frame->buttonOutput->GetLabel(), "2: Select the output folder...");
    EXPECT_EQ(frame->buttonConvert->GetLabel(), "3: Convert the Movie(s) to my iPhone!");
    EXPECT_EQ(frame->labelPercent->GetLabel(), "0%");
    EXPECT_EQ(frame->labelElapsed->GetLabel(), "Time Elapsed:");
    EXPECT_EQ(frame->labelElapsedTime->GetLabel(), "00:00:00");
    EXPECT_EQ(frame->labelRemaining->GetLabel(), "Time Remaining:");
    EXPECT_EQ(frame->labelRemainingTime->GetLabel(), "00:00:00");
    EXPECT_EQ(frame->labelStatus->GetLabel(), "");
    EXPECT_EQ(frame->labelLanguage->GetLabel(), "Language:");
    EXPECT_EQ(frame->labelOptimize->GetLabel(), "Optimize for:");
    EXPECT_EQ(frame->checkboxOverwrite->GetLabel(), "Ask before overwriting destination file");
    EXPECT_EQ(frame->checkboxHowToMove->GetLabel(),
              "After conversion, show me how to move the movie to my iPhone/iPod/iPad");
    EXPECT_EQ(frame->buttonDonate->GetLabel(), "Donate");
    EXPECT_EQ(frame->htmlSubtitle->ToText(), "Add subtitles");
    EXPECT_TRUE(frame->htmlAbout->ToText().Contains("Vantreo 1.24 for Linux"));
}

TEST_F(Layout, IsFrenchOnAFrenchSystem) {
    wxSetEnv("LANG", "fr_FR.UTF-8");
    start();
    wxSetEnv("LANG", "C.UTF-8");
    EXPECT_EQ(frame->notebook->GetPageText(0), "Convertir");
    EXPECT_EQ(frame->notebook->GetPageText(1), L"Pr\u00e9f\u00e9rences");
    EXPECT_EQ(frame->notebook->GetPageText(2), "A propos");
    const std::pair<wxWindow*, wxString> captions[] = {
        {frame->buttonMovies, "buttonMovies"},
        {frame->buttonOutput, "buttonOutput"},
        {frame->buttonConvert, "buttonConvert"},
        {frame->labelElapsed, "labelElapsed"},
        {frame->labelRemaining, "labelRemaining"},
        {frame->labelLanguage, "labelLanguage"},
        {frame->labelOptimize, "labelOptimize"},
        {frame->checkboxOverwrite, "checkboxOverwrite"},
        {frame->checkboxHowToMove, "checkboxHowToMove"},
        {frame->buttonDonate, "buttonDonate"}};
    for (const auto& [control, key] : captions) {
        const wxString french = frame->Translate(key, 0);
        EXPECT_EQ(control->GetLabel(), french) << key;
        frame->config_write("Language", "English");
        EXPECT_NE(frame->Translate(key, 0), french) << key;
        frame->config_write("Language", L"Fran\u00e7ais");
    }
    EXPECT_EQ(links_of(frame->htmlTranslations), (Links{"http://127.0.0.1:9/FR/Traductions"}));
    EXPECT_EQ(links_of(frame->htmlSubtitle),
              (Links{"http://127.0.0.1:9/FR/Comment_ajouter_les_sous-titres_a_la_video_iPhone"}));
    EXPECT_EQ(links_of(frame->htmlAbout),
              (Links{"http://127.0.0.1:9/FR/Remerciements", "http://127.0.0.1:9/FR/Contact"}));
}

TEST_F(Layout, LinksToTheEnglishPagesInEveryOtherLanguage) {
    setting("Language", "Polski");
    start();
    EXPECT_EQ(links_of(frame->htmlTranslations), (Links{"http://127.0.0.1:9/Translations"}));
    EXPECT_EQ(links_of(frame->htmlSubtitle),
              (Links{"http://127.0.0.1:9/How_to_add_subtitles_to_the_iPhone_video"}));
    EXPECT_EQ(links_of(frame->htmlAbout),
              (Links{"http://127.0.0.1:9/Greetings", "http://127.0.0.1:9/Contact"}));
}

TEST_F(Layout, SortsTheLanguagesAndAllowsNoTyping) {
    start();
    const wxComboBox* box = frame->comboboxLanguages;
    ASSERT_EQ(box->GetCount(), 9U);
    wxArrayString shown = box->GetStrings();
    wxArrayString sorted = shown;
    sorted.Sort();
    EXPECT_EQ(shown, sorted);
    EXPECT_NE(shown, frame->languages);
    EXPECT_EQ(box->GetValue(), "English");
    EXPECT_TRUE(box->HasFlag(wxCB_READONLY));
}

TEST_F(Layout, ShowsNoLanguageForAnUnknownName) {
    setting("Language", "Klingon");
    start();
    EXPECT_EQ(frame->comboboxLanguages->GetValue(), "");
    EXPECT_EQ(frame->comboboxLanguages->GetCount(), 9U);
}

TEST_F(Layout, OffersTheThreeDevices) {
    setting("Optimize", "1");
    start();
    ASSERT_EQ(frame->comboboxOptimize->GetCount(), 3U);
    EXPECT_EQ(frame->comboboxOptimize->GetString(0), "iPhone 2g/3g/3gs & iPod touch");
    EXPECT_EQ(frame->comboboxOptimize->GetString(1), "iPhone 4 & iPod touch 4");
    EXPECT_EQ(frame->comboboxOptimize->GetString(2), "iPad");
    EXPECT_EQ(frame->comboboxOptimize->GetSelection(), 1);
}

TEST_F(Layout, UsesTheFirstDeviceForAnIndexOutOfRange) {
    for (const wxString index : {"3", "-1", "iPad", "99999999999"}) {
        setting("Optimize", index);
        start();
        EXPECT_EQ(frame->comboboxOptimize->GetSelection(), 0) << index;
        close();
    }
}

TEST_F(Layout, ChecksABoxForTheExactWordOnly) {
    for (const wxString no : {"TRUE", "1", "false", "yes"}) {
        setting("Overwrite", no);
        setting("HowToMove", no);
        start();
        EXPECT_FALSE(frame->checkboxOverwrite->IsChecked()) << no;
        EXPECT_FALSE(frame->checkboxHowToMove->IsChecked()) << no;
        close();
    }
    setting("Overwrite", "true");
    setting("HowToMove", "true");
    start();
    EXPECT_TRUE(frame->checkboxOverwrite->IsChecked());
    EXPECT_TRUE(frame->checkboxHowToMove->IsChecked());
}

TEST_F(Layout, ShowsTheStoredFolderAndFocusesTheList) {
    start();
    EXPECT_EQ(frame->textOutput->GetValue(), out.path());
    EXPECT_TRUE(wait_until([this] { return wxWindow::FindFocus() == frame->textMovies; }));
}

TEST_F(Layout, AcceptsFilesOnTheListAndTheField) {
    start();
    EXPECT_NE(dynamic_cast<DnDtextMovies*>(frame->textMovies->GetDropTarget()), nullptr);
    EXPECT_NE(dynamic_cast<DnDtextOutput*>(frame->textOutput->GetDropTarget()), nullptr);
}

TEST_F(Layout, GivesThePagesATenPointFont) {
    start();
    for (const wxPanel* page : {frame->panelConvert, frame->panelOptions, frame->panelAbout})
        EXPECT_EQ(page->GetFont().GetPointSize(), 10);
}

TEST_F(Layout, ShowsTheHtmlBoxesWithoutScrollBarsInTheirPagesColour) {
    start();
    const std::pair<wxHtmlWindow*, wxPanel*> boxes[] = {
        {frame->htmlTranslations, frame->panelOptions},
        {frame->htmlSubtitle, frame->panelOptions},
        {frame->htmlAbout, frame->panelAbout}};
    for (const auto& [box, page] : boxes) {
        EXPECT_TRUE(box->HasFlag(wxHW_SCROLLBAR_NEVER));
        EXPECT_EQ(box->GetName(), "htmlWindow");
        EXPECT_EQ(page_colour(box), page->GetBackgroundColour());
    }
}
