// Changing the interface language while the program runs.

#include "app/Vantreo.h"

void Vantreo::OncomboboxLanguages(wxCommandEvent&) {}
