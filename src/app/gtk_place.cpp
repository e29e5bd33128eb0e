#include "app/gtk_place.h"

#include <gtk/gtk.h>
#include <wx/frame.h>
#include <wx/weakref.h>

#include <memory>

namespace {

/// Where a frame, unless it is gone, has to be.
struct Place {
    wxWeakRef<wxFrame> frame;
    wxSize size;
};

/// A copy of the place for one callback, which frees it with the second function.
Place* copy_of(gpointer place) {
    return new Place(*static_cast<Place*>(place));
}

void free_place(gpointer place) {
    delete static_cast<Place*>(place);
}

/// Whether GTK draws a shadow around the window, as it does with its own title bar on Wayland.
bool has_own_shadow(GtkWidget* window) {
    return gtk_style_context_has_class(gtk_widget_get_style_context(window), "csd");
}

/// The title bar that GTK draws, if any.
GtkWidget* title_bar_of(GtkWidget* window) {
    GtkWidget* title_bar = nullptr;
    gtk_container_forall(
        GTK_CONTAINER(window),
        [](GtkWidget* child, gpointer found) {
            if (GTK_IS_HEADER_BAR(child) && gtk_widget_get_visible(child))
                *static_cast<GtkWidget**>(found) = child;
        },
        &title_bar);
    return title_bar;
}

/// How much larger than the window that is seen the whole is, with the shadow around it.
wxSize shadow_of(GtkWidget* window) {
    GtkWidget* const content = gtk_bin_get_child(GTK_BIN(window));
    GtkWidget* const title_bar = title_bar_of(window);
    GtkAllocation whole;
    GtkAllocation inside;
    gtk_widget_get_allocation(window, &whole);
    gtk_widget_get_allocation(content, &inside);
    int top = inside.y;
    if (title_bar != nullptr) {
        GtkAllocation title;
        gtk_widget_get_allocation(title_bar, &title);
        top = title.y;
    }
    return {whole.width - inside.width, whole.height - (inside.y + inside.height - top)};
}

/// For a window of fixed size the toolkit and GTK both take the decorations off the size asked for.
/// The request depends on the decorations alone: a display that gives another size is not asked
/// again and again.
gboolean request_whole_size(gpointer data) {
    const auto* const place = static_cast<Place*>(data);
    if (place->frame) {
        GtkWidget* const window = place->frame->GetHandle();
        const wxSize whole = place->size + shadow_of(window);
        gtk_widget_set_size_request(window, whole.x, whole.y);
    }
    return G_SOURCE_REMOVE;
}

void on_size_allocate(GtkWidget* window, GtkAllocation*, gpointer data) {
    if (!has_own_shadow(window))
        return;
    wxSize requested;
    gtk_widget_get_size_request(window, &requested.x, &requested.y);
    // Not at once: the window is being laid out. Ahead of the drawing, so that nothing is seen of
    // it.
    if (requested != static_cast<Place*>(data)->size + shadow_of(window))
        g_idle_add_full(G_PRIORITY_HIGH_IDLE, request_whole_size, copy_of(data), free_place);
}

/// How much larger than the window the window manager's frame around it is. The toolkit does not
/// count a frame whose size it could not ask for in advance.
wxSize frame_around(GdkWindow* window) {
    wxSize inside;
    GdkRectangle whole;
    gdk_window_get_geometry(window, nullptr, nullptr, &inside.x, &inside.y);
    gdk_window_get_frame_extents(window, &whole);
    return wxSize(whole.width, whole.height) - inside;
}

void apply_size(const Place& place) {
    GtkWidget* const window = place.frame->GetHandle();
    if (has_own_shadow(window))
        return;
    place.frame->SetSize(place.size);
    const wxSize inside = place.size - frame_around(gtk_widget_get_window(window));
    gtk_widget_set_size_request(window, inside.x, inside.y);
}

gboolean apply_place(gpointer data) {
    const auto* const place = static_cast<Place*>(data);
    if (place->frame) {
        apply_size(*place);
        place->frame->Center(wxBOTH);
    }
    return G_SOURCE_REMOVE;
}

/// A window manager may put its frame around the window some time after it has shown it.
gboolean on_property(GtkWidget* window, GdkEventProperty* event, gpointer data) {
    if (event->atom == gdk_atom_intern_static_string("_NET_FRAME_EXTENTS") &&
        gtk_widget_get_mapped(window) && static_cast<Place*>(data)->frame)
        apply_size(*static_cast<Place*>(data));
    return FALSE;
}

/// Only now does the toolkit know the window manager's borders, and some window managers choose the
/// first place themselves.
gboolean on_map(GtkWidget* window, GdkEvent*, gpointer data) {
    // Not a toolkit event: those wait for the main loop, and the check screen is seen before.
    // Ahead of the first drawing, so that nothing is seen at the other place.
    g_idle_add_full(G_PRIORITY_HIGH_IDLE, apply_place, copy_of(data), free_place);
    g_signal_handlers_disconnect_by_data(window, data);
    return FALSE;
}

}  // namespace

void keep_size_and_place(wxFrame& frame, const wxSize& size) {
    const auto free_with_handler = +[](gpointer data, GClosure*) { free_place(data); };
    // Until it is mapped, GTK gives it a size of nothing, into which no notebook can be squeezed.
    frame.Bind(wxEVT_SIZE, [&frame](wxSizeEvent& event) {
        const wxSize client = frame.GetClientSize();
        event.Skip(client.x > 1 && client.y > 1);
    });
    g_signal_connect_data(frame.GetHandle(), "size-allocate", G_CALLBACK(on_size_allocate),
                          new Place{&frame, size}, free_with_handler, G_CONNECT_AFTER);
    g_signal_connect_data(frame.GetHandle(), "property-notify-event", G_CALLBACK(on_property),
                          new Place{&frame, size}, free_with_handler, G_CONNECT_AFTER);
    g_signal_connect_data(frame.GetHandle(), "map-event", G_CALLBACK(on_map),
                          new Place{&frame, size}, free_with_handler, GConnectFlags{});
}
