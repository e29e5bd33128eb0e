#include "app/painting.h"

#include <wx/frame.h>

#ifdef __WXGTK__

#include <gtk/gtk.h>
#include <wx/evtloop.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

#include <optional>

namespace {

constexpr long kGiveUpMillis = 1000;
constexpr int kRoundMillis = 1;

/// Counts how often a widget has been drawn, as long as it lives.
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
    static gboolean count_draw(GtkWidget*, void*, gpointer counter) {
        ++*static_cast<int*>(counter);
        return FALSE;
    }

    GtkWidget* widget;
    int count = 0;
    gulong handler;
};

}  // namespace

void paint_now(wxFrame& frame, int draws) {
    wxGUIEventLoop own;
    std::optional<wxEventLoopActivator> activator;
    if (wxEventLoopBase::GetActive() == nullptr)
        activator.emplace(&own);
    wxEventLoopBase& loop = *wxEventLoopBase::GetActive();

    const DrawCounter counter(frame.GetHandle());
    gtk_widget_queue_draw(frame.GetHandle());
    const wxStopWatch watch;
    int asked = 1;
    while (counter.draws() < draws && watch.Time() < kGiveUpMillis) {
        loop.YieldFor(wxEVT_CATEGORY_UI);
        if (counter.draws() == asked && asked++ < draws)
            gtk_widget_queue_draw(frame.GetHandle());
        wxMilliSleep(kRoundMillis);
    }
    gdk_display_sync(gtk_widget_get_display(frame.GetHandle()));
}

#else

void paint_now(wxFrame& frame, int) {
    frame.Update();
}

#endif
