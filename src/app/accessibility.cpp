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

/// The part of the control that takes the keyboard focus, which screen readers ask for the name.
GtkWidget* focusable_part(const wxWindow& control) {
    GtkWidget* const widget = control.GetHandle();
    GtkWidget* const child = GTK_IS_BIN(widget) ? gtk_bin_get_child(GTK_BIN(widget)) : nullptr;
    return child != nullptr && gtk_widget_get_can_focus(child) != 0 ? child : widget;
}

/// What screen readers see of a page and its title.
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

constexpr const char* kPlainText = R"css(
entry { caret-color: transparent; -gtk-secondary-caret-color: transparent; }
entry selection { background-color: transparent; color: transparent; }
)css";

void hide_caret_and_selection(GtkWidget* entry) {
    GtkCssProvider* const provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, kPlainText, -1, nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(entry),
                                   GTK_STYLE_PROVIDER(provider),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);  // the style context keeps it
}

/// Takes away the text cursor, which an entry gives to a window of its own.
void show_arrow_cursor(GtkWidget* entry) {
    if (gtk_widget_get_realized(entry) == 0)
        return;
    GList* const windows = gdk_window_get_children(gtk_widget_get_window(entry));
    for (const GList* item = windows; item != nullptr; item = item->next) {
        auto* const window = static_cast<GdkWindow*>(item->data);
        gpointer owner = nullptr;
        gdk_window_get_user_data(window, &owner);
        if (owner == entry)
            gdk_window_set_cursor(window, nullptr);  // that of the page
    }
    g_list_free(windows);
}

void open_list(GtkGestureMultiPress* click, gint, gdouble, gdouble, GtkComboBox* box) {
    gtk_gesture_set_state(GTK_GESTURE(click), GTK_EVENT_SEQUENCE_CLAIMED);
    gtk_widget_grab_focus(gtk_bin_get_child(GTK_BIN(box)));
    gtk_combo_box_popup(box);
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

void make_one_button(wxComboBox& box) {
    GtkWidget* const widget = box.GetHandle();
    GtkWidget* const entry = gtk_bin_get_child(GTK_BIN(widget));
    hide_caret_and_selection(entry);
    show_arrow_cursor(entry);
    // An entry sets its cursor again whenever it becomes sensitive.
    for (const char* signal : {"realize", "state-flags-changed"})
        g_signal_connect_after(entry, signal, G_CALLBACK(show_arrow_cursor), nullptr);
    GtkGesture* const click = gtk_gesture_multi_press_new(entry);
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(click), GTK_PHASE_CAPTURE);
    g_signal_connect(click, "pressed", G_CALLBACK(open_list), widget);
    g_object_set_data_full(G_OBJECT(entry), "vantreo-click", click, g_object_unref);
}

void stop_announcing_pages(const wxNotebook& notebook) {
    for (int page = 0; page < static_cast<int>(notebook.GetPageCount()); ++page)
        g_object_freeze_notify(G_OBJECT(told_of_page(notebook, page).get()));
}

#else

void label_control(wxWindow&, std::initializer_list<wxWindow*>) {}
void label_by_page_title(wxWindow&, const wxNotebook&, int) {}
void name_control(wxWindow&, const wxString&) {}
void make_one_tab_stop(wxComboBox&) {}
void make_one_button(wxComboBox&) {}
void stop_announcing_pages(const wxNotebook&) {}

#endif
