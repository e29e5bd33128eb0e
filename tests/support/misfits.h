#pragma once

#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/string.h>

#include <vector>

typedef struct _GtkWidget GtkWidget;

/// What is cut off or covered on a visible page: a line for each text that is larger than its
/// control, each HTML page that is larger than its box, and each pair of overlapping controls.
///
/// Not reported: the progress box around its contents, the gauge before the first run, and boxes
/// whose empty margins overlap while their texts do not.
std::vector<wxString> misfits(const wxPanel& page);

/// The same for the texts in one of the toolkit's own widgets, such as a dialog.
std::vector<wxString> misfits_of_texts(GtkWidget* widget);

/// The same for the titles of the pages.
std::vector<wxString> misfits_of_titles(wxNotebook& notebook);
