#include "app/accessibility.h"

#include <wx/combobox.h>
#include <wx/notebook.h>

#ifdef __WXGTK__

#include <gtk/gtk.h>

#include <memory>

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

template <typename Object>
using ObjectPtr = std::unique_ptr<Object, Unref>;

/// What the control takes the keyboard focus with, which is what a screen reader asks.
GtkWidget* focusable_part(const wxWindow& control) {
    GtkWidget* const widget = control.GetHandle();
    GtkWidget* const child = GTK_IS_BIN(widget) ? gtk_bin_get_child(GTK_BIN(widget)) : nullptr;
    return child != nullptr && gtk_widget_get_can_focus(child) != 0 ? child : widget;
}

/// What screen readers are told about a page and its title.
ObjectPtr<AtkObject> told_of_page(const wxNotebook& notebook, int page) {
    AtkObject* const pages = gtk_widget_get_accessible(notebook.GetHandle());
    return ObjectPtr<AtkObject>(atk_object_ref_accessible_child(pages, page));
}

void add_label(const wxWindow& control, AtkObject* label) {
    for (GtkWidget* widget : {control.GetHandle(), focusable_part(control)}) {
        atk_object_add_relationship(gtk_widget_get_accessible(widget), ATK_RELATION_LABELLED_BY,
                                    label);
    }
}

void keep_focus_from_buttons(GtkWidget* part, gpointer) {
    if (GTK_IS_BUTTON(part))
        gtk_widget_set_can_focus(part, FALSE);
    else if (GTK_IS_CONTAINER(part))
        gtk_container_forall(GTK_CONTAINER(part), keep_focus_from_buttons, nullptr);
}

}  // namespace

void label_control(wxWindow& control, std::initializer_list<wxWindow*> labels) {
    for (const wxWindow* label : labels)
        add_label(control, gtk_widget_get_accessible(label->GetHandle()));
}

void label_by_page_title(wxWindow& control, const wxNotebook& notebook, int page) {
    add_label(control, told_of_page(notebook, page).get());
}

void name_control(wxWindow& control, const wxString& name) {
    for (GtkWidget* widget : {control.GetHandle(), focusable_part(control)})
        atk_object_set_name(gtk_widget_get_accessible(widget), name.utf8_str());
}

void make_one_tab_stop(wxComboBox& box) {
    keep_focus_from_buttons(box.GetHandle(), nullptr);
}

void stop_telling_of_pages(const wxNotebook& notebook) {
    for (int page = 0; page < static_cast<int>(notebook.GetPageCount()); ++page)
        g_object_freeze_notify(G_OBJECT(told_of_page(notebook, page).get()));
}

#else

void label_control(wxWindow&, std::initializer_list<wxWindow*>) {}
void label_by_page_title(wxWindow&, const wxNotebook&, int) {}
void name_control(wxWindow&, const wxString&) {}
void make_one_tab_stop(wxComboBox&) {}
void stop_telling_of_pages(const wxNotebook&) {}

#endif
