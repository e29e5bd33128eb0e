#pragma once

#include <wx/string.h>

#include <initializer_list>

class wxComboBox;
class wxNotebook;
class wxWindow;

// Names for screen readers of controls without a caption of their own, and how the keyboard and the
// pointer use these controls. No-ops on platforms that are not known to need them.

/// Names the control by the texts of `labels`, in this order; a label that changes changes the
/// name. Call once for a control, after all labels exist.
void label_control(wxWindow& control, std::initializer_list<wxWindow*> labels);

/// Names a control by the title of its page.
void label_by_page_title(wxWindow& control, const wxNotebook& notebook, int page);

/// Names the control by a text.
void name_control(wxWindow& control, const wxString& name);

/// Makes a read-only box a single Tab stop: Tab skips its arrow, which the arrow keys replace.
void make_one_tab_stop(wxComboBox& box);

/// Makes a read-only box act as one button: a click on its text opens the list, and the text shows
/// no caret, no selection and no text cursor.
void make_one_button(wxComboBox& box);

/// Call before the notebook is destroyed: keeps GTK from announcing pages to screen readers after
/// it has removed them, about which it would print warnings.
void stop_announcing_pages(const wxNotebook& notebook);
