#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <vector>

typedef struct _GtkWidget GtkWidget;

/// The texts in the painted window that are hard to read: less contrast than 4.5 to 1 between the
/// text's colour and its surroundings. Texts of disabled controls and the
/// texts of `except` do not count, and neither do the pages of HTML boxes.
std::vector<wxString> unreadable_texts(GtkWidget* window, const wxString& except = "");

/// What is painted on the background in a part of the widget, relative to it; empty if nothing.
wxRect drawing_in(GtkWidget* window, GtkWidget* widget, const wxRect& part);
