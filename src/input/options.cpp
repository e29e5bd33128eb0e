// The option controls: each saves its state as a setting the moment it changes.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>

#include "app/Vantreo.h"

void Vantreo::OncomboboxOptimize(wxCommandEvent&) {
    config_write("Optimize", wxString::Format("%i", comboboxOptimize->GetSelection()));
    buttonConvert->SetLabel(Translate("buttonConvert", 0));  // names the device
}

void Vantreo::OncheckboxOverwrite(wxCommandEvent&) {
    config_write("Overwrite", checkboxOverwrite->IsChecked() ? "true" : "false");
}

void Vantreo::OncheckboxHowToMove(wxCommandEvent&) {
    config_write("HowToMove", checkboxHowToMove->IsChecked() ? "true" : "false");
}
