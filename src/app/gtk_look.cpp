#include "app/gtk_look.h"

#include <gtk/gtk.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/weakref.h>

#include <memory>

namespace {

// The controls' places were drawn for a screen where 10 points are 10 pixels.
constexpr int kTextDpi = 80;

constexpr const char* kStyleSheet = R"css(
entry { min-height: 0; padding-top: 0; padding-bottom: 0; }
button { min-height: 0; padding-top: 2px; padding-bottom: 2px; }
combobox entry { padding-left: 4px; padding-right: 0; }
combobox button { padding: 0 2px; }
progressbar trough, progressbar progress { min-height: 13px; }
)css";

/// Where a frame, unless it is gone, has to be.
struct Place {
    wxWeakRef<wxFrame> frame;
    wxSize size;
};

gboolean apply_place(gpointer data) {
    const std::unique_ptr<Place> place(static_cast<Place*>(data));
    if (place->frame) {
        place->frame->SetSize(place->size);
        place->frame->Center(wxBOTH);
    }
    return FALSE;
}

}  // namespace

void apply_gtk_look() {
    g_object_set(gtk_settings_get_default(), "gtk-xft-dpi", kTextDpi * 1024, nullptr);

    // The pages get the very colour that the toolkit reports for them, as the HTML boxes do.
    const wxString page = wxPanel::GetClassDefaultAttributes().colBg.GetAsString(wxC2S_CSS_SYNTAX);
    const wxString style_sheet =
        kStyleSheet + ("notebook > stack { background-color: " + page + "; }");
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, style_sheet.utf8_str(), -1, nullptr);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(),
                                              GTK_STYLE_PROVIDER(provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

void keep_place_when_mapped(wxFrame& frame, const wxSize& size) {
    const auto on_map = +[](GtkWidget* window, GdkEvent*, gpointer data) -> gboolean {
        const Place place = *static_cast<Place*>(data);
        g_signal_handlers_disconnect_by_data(window, data);
        // Not a toolkit event: those wait for the main loop, and the check screen is seen before.
        g_idle_add(apply_place, new Place(place));
        return FALSE;
    };
    const auto free_place = +[](gpointer data, GClosure*) { delete static_cast<Place*>(data); };
    // Until it is mapped, GTK gives it a size of nothing, into which no notebook can be squeezed.
    frame.Bind(wxEVT_SIZE, [&frame](wxSizeEvent& event) {
        const wxSize client = frame.GetClientSize();
        event.Skip(client.x > 1 && client.y > 1);
    });
    g_signal_connect_data(frame.GetHandle(), "map-event", G_CALLBACK(on_map),
                          new Place{&frame, size}, free_place, GConnectFlags{});
}
