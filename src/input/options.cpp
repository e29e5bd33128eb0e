// The option controls that save their state as a setting.

#include "app/Vantreo.h"

void Vantreo::OncomboboxOptimize(wxCommandEvent&) {}

void Vantreo::OncheckboxOverwrite(wxCommandEvent&) {}

void Vantreo::OncheckboxHowToMove(wxCommandEvent&) {}
