#pragma once

#include <wx/string.h>

#include <initializer_list>

class wxComboBox;
class wxNotebook;
class wxWindow;

// What a screen reader is told about controls that show no caption of their own, and how the
// keyboard and the pointer use them. On platforms where nothing of this is known to be needed,
// these do nothing.

/// Lets the texts of `labels`, in this order, name the control; they are read anew each time. Call
/// once for a control, after all of them are made.
void label_control(wxWindow& control, std::initializer_list<wxWindow*> labels);

/// Lets the title of a page name a control on it.
void label_by_page_title(wxWindow& control, const wxNotebook& notebook, int page);

/// Names the control by a text.
void name_control(wxWindow& control, const wxString& name);

/// Lets Tab go to a box that takes no typing once, not also to its arrow: the arrow keys do the
/// same.
void make_one_tab_stop(wxComboBox& box);

/// Makes the text of a box that takes no typing one with its arrow: a click on it opens the list,
/// and it shows no caret, no selection and no text cursor.
void make_one_button(wxComboBox& box);

/// To be called before the notebook is destroyed: keeps GTK from telling screen readers about pages
/// that it has just removed, which it complains about itself.
void stop_telling_of_pages(const wxNotebook& notebook);
