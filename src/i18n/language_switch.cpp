// Changing the interface language while the program runs.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/html/htmlwin.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include "app/Vantreo.h"
#include "i18n/toolkit_language.h"
#include "web/pages.h"

void Vantreo::OncomboboxLanguages(wxCommandEvent&) {
    // First, so that every text below is in the new language.
    config_write("Language", comboboxLanguages->GetValue());
    set_toolkit_language(languages, languagesEnglish, comboboxLanguages->GetValue());
    layout_normal();

    notebook->SetPageText(0, Translate("panelConvert", 0));
    notebook->SetPageText(1, Translate("panelOptions", 0));
    notebook->SetPageText(2, Translate("panelAbout", 0));
    buttonMovies->SetLabel(Translate("buttonMovies", 0));
    buttonOutput->SetLabel(Translate("buttonOutput", 0));
    labelOptimize->SetLabel(Translate("labelOptimize", 0));
    // The Convert page's colour on purpose, although the box is on the Options page.
    show_page(*htmlSubtitle, subtitle_page(*panelConvert));
    buttonConvert->SetLabel(Translate("buttonConvert", 0));
    labelElapsed->SetLabel(Translate("labelElapsed", 0));
    labelRemaining->SetLabel(Translate("labelRemaining", 0));
    labelLanguage->SetLabel(Translate("labelLanguage", 0));
    checkboxOverwrite->SetLabel(Translate("checkboxOverwrite", 0));
    checkboxHowToMove->SetLabel(Translate("checkboxHowToMove", 0));
    show_page(*htmlTranslations, translations_page());
    buttonDonate->SetLabel(Translate("buttonDonate", 0));
    show_page(*htmlAbout, about_page());
}
