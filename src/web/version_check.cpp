// The version check at start-up.

#include "app/Vantreo.h"

void Vantreo::layout_checkVersion() {}

void Vantreo::checkVersion() {
    layout();
}

void Vantreo::OnbuttonGetNewVersion(wxCommandEvent&) {}
