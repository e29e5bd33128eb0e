#include "app/gtk_look.h"

#include <gtk/gtk.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include "app/contrast.h"
#include "app/gtk_text_size.h"

namespace {

/// The style class of what has fixed places.
constexpr const char* kFixedPlaces = "fixed-places";

// The second selector of the buttons is the toolkit's measure of an ordinary button.
constexpr const char* kStyleSheet = R"css(
.fixed-places entry { min-height: 0; padding-top: 0; padding-bottom: 0; }
.fixed-places entry:not(:focus) selection { background-color: transparent; color: transparent; }
.fixed-places button, window > buttonbox > button {
    min-height: 0; padding-top: 2px; padding-bottom: 2px; }
.fixed-places button.text-button { padding-left: 8px; padding-right: 8px; }
.fixed-places combobox entry { min-height: 18px; margin: 0; padding-left: 4px; padding-right: 2px; }
.fixed-places combobox button { margin: 0; padding: 0; min-width: 16px; }
.fixed-places combobox arrow { min-width: 14px; min-height: 14px; }
.fixed-places checkbutton { padding-top: 0; padding-bottom: 0; }
.fixed-places check { min-width: 14px; min-height: 14px; margin: 0 4px; padding: 0; }
.fixed-places progressbar trough, .fixed-places progressbar progress { min-height: 13px; }
)css";

// The mark of a checked box as the toolkit's default theme has it, but from that theme's picture
// instead of its drawing: reading drawings takes libraries of 8 MiB. The picture is for scale 1.
constexpr const char* kCheckMark = R"css(
check:checked { -gtk-icon-source: -gtk-recolor(
    url("resource:///org/gtk/libgtk/theme/Adwaita/assets/check-symbolic.symbolic.png")); }
)css";

// For buttons that stand out by their shadow alone: the pages cut it off.
constexpr const char* kOutlinedButtons =
    ".fixed-places button.text-button { box-shadow: inset 0 0 0 1px alpha(currentColor, 0.3); }";

bool has_borderless_buttons() {
    GtkWidget* const button = gtk_button_new_with_label("");
    g_object_ref_sink(button);
    GtkStyleContext* const style = gtk_widget_get_style_context(button);
    GtkBorder border;
    gtk_style_context_get_border(style, gtk_style_context_get_state(style), &border);
    gtk_widget_destroy(button);
    g_object_unref(button);
    return border.top == 0;
}

bool has_default_theme() {
    char* name = nullptr;
    g_object_get(gtk_settings_get_default(), "gtk-theme-name", &name, nullptr);
    const bool is_default = g_strcmp0(name, "Adwaita") == 0;
    g_free(name);
    return is_default;
}

bool has_ordinary_scale() {
    GdkMonitor* const monitor = gdk_display_get_monitor(gdk_display_get_default(), 0);
    return monitor != nullptr && gdk_monitor_get_scale_factor(monitor) == 1;
}

/// The pages get the very colour that the toolkit reports for them, as the HTML boxes do, and all
/// page titles that of texts: some themes fade the titles of pages in the background too much.
void load_style_sheet(GtkCssProvider* provider) {
    const wxVisualAttributes look = wxPanel::GetClassDefaultAttributes();
    const wxString page = opaque_page_colour(look.colBg).GetAsString(wxC2S_CSS_SYNTAX);
    const wxString text = look.colFg.GetAsString(wxC2S_CSS_SYNTAX);
    const wxString style_sheet =
        kStyleSheet + (".fixed-places notebook > stack { background-color: " + page + "; }") +
        ".fixed-places notebook > header tab label { color: " + text + "; opacity: 1; }" +
        (has_borderless_buttons() ? kOutlinedButtons : "") +
        (has_default_theme() && has_ordinary_scale() ? kCheckMark : "");
    gtk_css_provider_load_from_data(provider, style_sheet.utf8_str(), -1, nullptr);
}

}  // namespace

void apply_gtk_look() {
    fix_text_size();
    GtkCssProvider* const provider = gtk_css_provider_new();
    load_style_sheet(provider);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(),
                                              GTK_STYLE_PROVIDER(provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_signal_connect_swapped(gtk_settings_get_default(), "notify::gtk-theme-name",
                             G_CALLBACK(load_style_sheet), provider);
    g_object_unref(provider);  // the screen keeps it
}

void fit_theme_to_places(wxFrame& frame) {
    GtkWidget* const contents = gtk_bin_get_child(GTK_BIN(frame.GetHandle()));
    gtk_style_context_add_class(gtk_widget_get_style_context(contents), kFixedPlaces);
}
