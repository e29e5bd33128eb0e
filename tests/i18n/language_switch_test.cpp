// Choosing a language while the program runs.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include "support/frame_test.h"
#include "support/html_links.h"

namespace {

class LanguageSwitch : public FrameTest {
  protected:
    void choose(const wxString& language) {
        frame->comboboxLanguages->SetStringSelection(language);
        wxCommandEvent event(wxEVT_COMBOBOX);
        event.SetEventObject(frame->comboboxLanguages);
        frame->comboboxLanguages->GetEventHandler()->ProcessEvent(event);
    }

    /// Every translated text, in the order of the controls' keys.
    std::vector<std::pair<wxString, wxString>> shown() const {
        return {{"panelConvert", frame->notebook->GetPageText(0)},
                {"panelOptions", frame->notebook->GetPageText(1)},
                {"panelAbout", frame->notebook->GetPageText(2)},
                {"buttonMovies", frame->buttonMovies->GetLabel()},
                {"buttonOutput", frame->buttonOutput->GetLabel()},
                {"labelOptimize", frame->labelOptimize->GetLabel()},
                {"buttonConvert", frame->buttonConvert->GetLabel()},
                {"labelElapsed", frame->labelElapsed->GetLabel()},
                {"labelRemaining", frame->labelRemaining->GetLabel()},
                {"labelLanguage", frame->labelLanguage->GetLabel()},
                {"checkboxOverwrite", frame->checkboxOverwrite->GetLabel()},
                {"checkboxHowToMove", frame->checkboxHowToMove->GetLabel()},
                {"buttonDonate", frame->buttonDonate->GetLabel()}};
    }

    /// HTML collapses blanks, so texts are compared without them.
    static wxString without_blanks(wxString text) {
        for (const wxString blank : {L" ", L"\n", L"\u00a0"})
            text.Replace(blank, "");
        return text;
    }
};

const wxString kFrench = L"Fran\u00e7ais";

}  // namespace

TEST_F(LanguageSwitch, RelabelsEverythingInEachLanguageAndIsKept) {
    start();
    const wxArrayString languages = frame->languages;
    for (const wxString& language : languages) {
        choose(language);
        EXPECT_EQ(stored("Language"), language);
        for (const auto& [key, text] : shown())
            EXPECT_EQ(text, frame->Translate(key, 0)) << key.utf8_string();
        const wxString about = without_blanks(frame->htmlAbout->ToText());
        for (const wxString key : {"htmlAboutTranslations_1", "htmlAboutTranslations_2",
                                   "htmlAboutContact", "htmlAboutYouLike", "htmlAboutDonate"})
            EXPECT_TRUE(about.Contains(without_blanks(frame->Translate(key, 0))))
                << key.utf8_string();
        EXPECT_TRUE(about.Contains("Vantreo1.24forLinux"));
        EXPECT_EQ(without_blanks(frame->htmlSubtitle->ToText()),
                  without_blanks(frame->Translate("htmlSubtitle", 0)));
        EXPECT_EQ(without_blanks(frame->htmlTranslations->ToText()),
                  without_blanks(frame->Translate("htmlTranslations", 0)));
        close();
        start();
        EXPECT_EQ(frame->currentLanguage, language);
        EXPECT_EQ(frame->comboboxLanguages->GetValue(), language);
    }
}

TEST_F(LanguageSwitch, ShowsTheGivenFrenchTextsAndLinks) {
    start();
    choose(kFrench);
    EXPECT_EQ(frame->notebook->GetPageText(0), "Convertir");
    EXPECT_EQ(frame->notebook->GetPageText(1), L"Pr\u00e9f\u00e9rences");
    EXPECT_EQ(frame->notebook->GetPageText(2), "A propos");
    EXPECT_EQ(links_of(frame->htmlTranslations), (Links{"http://127.0.0.1:9/FR/Traductions"}));
    EXPECT_EQ(links_of(frame->htmlSubtitle),
              (Links{"http://127.0.0.1:9/FR/Comment_ajouter_les_sous-titres_a_la_video_iPhone"}));
    EXPECT_EQ(links_of(frame->htmlAbout),
              (Links{"http://127.0.0.1:9/FR/Remerciements", "http://127.0.0.1:9/FR/Contact"}));
    choose("English");
    EXPECT_EQ(links_of(frame->htmlAbout),
              (Links{"http://127.0.0.1:9/Greetings", "http://127.0.0.1:9/Contact"}));
}

TEST_F(LanguageSwitch, FallsBackToEnglishInItalian) {
    start();
    choose("Italiano");
    EXPECT_EQ(frame->notebook->GetPageText(0), "Converti");
    EXPECT_EQ(frame->notebook->GetPageText(1), "Opzioni");
    EXPECT_EQ(frame->notebook->GetPageText(2), "Informazioni");
    EXPECT_EQ(frame->labelOptimize->GetLabel(), "Optimize for:");
    EXPECT_TRUE(frame->htmlTranslations->ToText().StartsWith("Want to translate Vantreo"));
}

TEST_F(LanguageSwitch, NamesTheChosenDevice) {
    setting("Optimize", "2");
    start();
    choose("Deutsch");
    EXPECT_EQ(frame->buttonConvert->GetLabel(),
              L"3: Konvertiere Filmdatei(en) f\u00fcr mein iPad! ");
}

TEST_F(LanguageSwitch, ReturnsTheWindowToItsIdleState) {
    start();
    frame->layout_converting(0);
    choose("Deutsch");
    EXPECT_TRUE(frame->textMovies->IsThisEnabled());
    EXPECT_TRUE(frame->checkboxHowToMove->IsThisEnabled());
    EXPECT_EQ(frame->buttonConvert->GetLabel(), frame->Translate("buttonConvert", 0));
}

TEST_F(LanguageSwitch, GivesTheSubtitleBoxTheConvertPagesColour) {
    start();
    frame->panelConvert->SetBackgroundColour(wxColour(1, 2, 3));
    frame->panelOptions->SetBackgroundColour(wxColour(4, 5, 6));
    choose("Deutsch");
    EXPECT_EQ(page_colour(frame->htmlSubtitle), wxColour(1, 2, 3));
    EXPECT_EQ(page_colour(frame->htmlTranslations), wxColour(4, 5, 6));
}

TEST_F(LanguageSwitch, LeavesTheDevicesAndTheProgressAlone) {
    start();
    frame->labelPercent->SetLabel("42%");
    frame->labelElapsedTime->SetLabel("00:01:00");
    choose("Deutsch");
    EXPECT_EQ(frame->comboboxOptimize->GetValue(), "iPhone 2g/3g/3gs & iPod touch");
    EXPECT_EQ(frame->labelPercent->GetLabel(), "42%");
    EXPECT_EQ(frame->labelElapsedTime->GetLabel(), "00:01:00");
}
