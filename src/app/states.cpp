// The phases of a run, as the window shows them.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/gauge.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "app/Vantreo.h"

namespace {

const wxColour kConvertingColour(0, 0, 255);
const wxColour kConvertedColour(10, 201, 26);
const wxColour kCanceledColour(255, 0, 0);

/// The gauge's place during a run.
const wxRect kGaugeAtWork(20, 225, 633, 15);

}  // namespace

void Vantreo::enable_inputs(bool enable) {
    wxWindow* const inputs[] = {
        textMovies,       buttonMovies,  textOutput,        buttonOutput,      labelOptimize,
        comboboxOptimize, labelLanguage, comboboxLanguages, checkboxOverwrite, checkboxHowToMove};
    for (wxWindow* input : inputs)
        input->Enable(enable);
}

/// " (2/3)" for the second of three movies; empty for a single movie or index 0.
wxString Vantreo::position_text(unsigned long index) const {
    const unsigned int count = textMovies->GetCount();
    if (count < 2 || index == 0)
        return wxEmptyString;
    return wxString::Format(" (%i/%i)", static_cast<int>(index), static_cast<int>(count));
}

void Vantreo::show_progress_start(const wxString& status) {
    labelStatus->SetLabel(status);
    gaugeProgress->SetSize(kGaugeAtWork);
    gaugeProgress->SetValue(0);
    labelElapsedTime->SetLabel("00:00:00");
    labelRemainingTime->SetLabel("??:??:??");
    labelPercent->SetLabel("0%");
}

void Vantreo::layout_normal() {
    enable_inputs(true);
    buttonConvert->SetLabel(Translate("buttonConvert", 0));
}

void Vantreo::layout_converting(unsigned long index) {
    enable_inputs(false);
    labelStatus->SetForegroundColour(kConvertingColour);
    show_progress_start(Translate("labelConvert_ing", 0) + position_text(index));
    buttonConvert->SetLabel(Translate("buttonConvert_cancel", 0));
}

void Vantreo::layout_subtitle(unsigned long index) {
    show_progress_start(Translate("labelConvert_ing", 0) + position_text(index) + " " +
                        Translate("labelSubtitle", 0));
}

void Vantreo::layout_converted() {
    labelStatus->SetForegroundColour(kConvertedColour);
    labelStatus->SetLabel(Translate("labelConvert_ed", 0));
    labelRemainingTime->SetLabel("00:00:00");
    textMovies->Clear();
    layout_movies();
    layout_normal();
    if (config_read("HowToMove") == "true") {
        open_page(page_address("FR/Comment_mettre_une_video_sur_son_iPhone",
                               "How_to_put_a_video_on_your_iPhone"));
    }
}

void Vantreo::layout_error() {
    labelStatus->SetLabel("");
    layout_normal();
}

void Vantreo::layout_canceled() {
    labelStatus->SetForegroundColour(kCanceledColour);
    labelStatus->SetLabel(Translate("labelConvert_canceled", 0));
    layout_normal();
}
