#include "app/painting.h"

#include <wx/frame.h>

#ifdef __WXGTK__

#include <gtk/gtk.h>
#include <wx/evtloop.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

#include <optional>
#ifdef GDK_WINDOWING_X11
// Last: it defines words like None as macros.
#include <gdk/gdkx.h>
#endif

namespace {

constexpr long kGiveUpMillis = 1000;
constexpr int kRoundMillis = 1;

#ifdef GDK_WINDOWING_X11
/// Whether the X server shows all of the window: a window manager may first put it into a frame of
/// one pixel and enlarge that after the window has answered.
bool is_seen_whole(GdkWindow* window, wxSize size) {
    GdkDisplay* const gdk_display = gdk_window_get_display(window);
    Display* const display = GDK_DISPLAY_XDISPLAY(gdk_display);
    // The window manager may take the frame away at any time.
    gdk_x11_display_error_trap_push(gdk_display);
    bool is_whole = true;
    Window root = 0;
    for (Window part = GDK_WINDOW_XID(window); is_whole && part != root;) {
        XWindowAttributes attributes;
        Window parent = 0;
        Window* children = nullptr;
        unsigned int count = 0;
        is_whole = XGetWindowAttributes(display, part, &attributes) != 0 &&
                   attributes.map_state == IsViewable && attributes.width >= size.x &&
                   attributes.height >= size.y &&
                   XQueryTree(display, part, &root, &parent, &children, &count) != 0;
        if (children != nullptr)
            XFree(children);
        part = parent;
    }
    gdk_x11_display_error_trap_pop_ignored(gdk_display);
    return is_whole;
}
#endif

/// Whether the display has given the window the size that was asked for.
bool has_its_size(GtkWidget* widget) {
    if (!gtk_widget_get_mapped(widget))
        return false;
    GdkWindow* const window = gtk_widget_get_window(widget);
    wxSize asked;
    gtk_widget_get_size_request(widget, &asked.x, &asked.y);
    if (wxSize(gdk_window_get_width(window), gdk_window_get_height(window)) != asked)
        return false;
#ifdef GDK_WINDOWING_X11
    if (GDK_IS_X11_WINDOW(window))
        return is_seen_whole(window, asked * gdk_window_get_scale_factor(window));
#endif
    return true;
}

/// Counts how often a window has been drawn at its size, as long as it lives.
class DrawCounter {
  public:
    explicit DrawCounter(GtkWidget* drawn)
        : widget(drawn),
          handler(g_signal_connect_after(drawn, "draw", G_CALLBACK(+count_draw), &count)) {}
    ~DrawCounter() { g_signal_handler_disconnect(widget, handler); }
    DrawCounter(const DrawCounter&) = delete;
    DrawCounter& operator=(const DrawCounter&) = delete;

    int draws() const { return count; }

  private:
    static gboolean count_draw(GtkWidget* drawn, void*, gpointer counter) {
        if (has_its_size(drawn))
            ++*static_cast<int*>(counter);
        return FALSE;
    }

    GtkWidget* widget;
    int count = 0;
    gulong handler;
};

/// Whether the window can be drawn between the display's frames: what is drawn on a Wayland display
/// then is not shown.
bool has_x_display(GtkWidget* widget) {
#ifdef GDK_WINDOWING_X11
    return GDK_IS_X11_DISPLAY(gtk_widget_get_display(widget));
#else
    return false;
#endif
}

/// Lays the window out and draws it without waiting for the display's next frame, 16 ms away.
void draw_at_once(wxFrame& frame) {
    gtk_container_check_resize(GTK_CONTAINER(frame.GetHandle()));
    frame.Update();
}

}  // namespace

void paint_now(wxFrame& frame, int draws) {
    wxGUIEventLoop own;
    std::optional<wxEventLoopActivator> activator;
    if (wxEventLoopBase::GetActive() == nullptr)
        activator.emplace(&own);
    wxEventLoopBase& loop = *wxEventLoopBase::GetActive();

    const bool is_on_x = has_x_display(frame.GetHandle());
    const DrawCounter counter(frame.GetHandle());
    gtk_widget_queue_draw(frame.GetHandle());
    const wxStopWatch watch;
    int asked = 1;
    bool fits = false;
    while (counter.draws() < draws && watch.Time() < kGiveUpMillis) {
        loop.YieldFor(wxEVT_CATEGORY_UI);
        if (counter.draws() == asked && asked < draws) {
            gtk_widget_queue_draw(frame.GetHandle());
            ++asked;
        }
        // Twice in a row: what the window manager sent before the first may change the size.
        const bool fitted_before = fits;
        fits = has_its_size(frame.GetHandle());
        if (asked == draws && is_on_x && fits && fitted_before)
            draw_at_once(frame);
        if (counter.draws() < draws)
            wxMilliSleep(kRoundMillis);
    }
    // A Wayland display that has stopped would never answer.
    GdkDisplay* const display = gtk_widget_get_display(frame.GetHandle());
    if (is_on_x)
        gdk_display_sync(display);
    else
        gdk_display_flush(display);
}

#else

void paint_now(wxFrame& frame, int) {
    frame.Update();
}

#endif
