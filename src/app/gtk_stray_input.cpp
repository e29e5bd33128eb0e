#include "app/gtk_stray_input.h"

#include <gtk/gtk.h>

#include <memory>

namespace {

constexpr const char* kGuard = "vantreo-guard";

/// No keyboard waits longer before it repeats a key, or between two repeats.
constexpr guint32 kLongestRepeatMillis = 1000;

/// A longer delay between the display and the program means that their clocks differ.
constexpr guint32 kLongestDelayMillis = 10'000;

constexpr gint64 kMicrosPerMilli = 1000;

/// A window of the program, other than a menu, with what it takes to judge its clicks.
struct Guard {
    GtkWidget* window;
    GtkGesture* clicks;
    gint64 drawn =
        0;  ///< when it was first drawn, in microseconds of the monotonic clock; 0: never

    ~Guard() { g_object_unref(clicks); }
};

/// The last press of a pointer's button. The pointers serve as names: what they point at may be
/// gone.
struct {
    guint32 time = 0;  ///< in milliseconds of the display's clock
    const void* window = nullptr;
    const void* button = nullptr;  ///< a push button of the main window, or null
    bool ignored = false;
} last_press;

/// The Enter or Space key that is kept pressed.
struct {
    guint16 code = 0;  ///< 0 for none
    guint32 time = 0;  ///< of its last press or repeat, in milliseconds of the display's clock
    const void* window = nullptr;  ///< where it was pressed
} held_key;

gint double_click_millis() {
    gint millis = 0;
    g_object_get(gtk_settings_get_default(), "gtk-double-click-time", &millis, nullptr);
    return millis;
}

/// The push button of the main window that the event is for; null for anything else.
const void* push_button(GtkWidget* target) {
    GtkWidget* const button = gtk_widget_get_ancestor(target, GTK_TYPE_BUTTON);
    const bool pushed = button != nullptr && GTK_IS_TOGGLE_BUTTON(button) == 0 &&
                        GTK_IS_DIALOG(gtk_widget_get_toplevel(button)) == 0;
    return pushed ? button : nullptr;
}

/// How long the program has taken to see what the display saw at `time`. 0 where the display does
/// not use the monotonic clock of this machine.
guint32 delay_millis(guint32 time) {
    const guint32 delay = static_cast<guint32>(g_get_monotonic_time() / kMicrosPerMilli) - time;
    return delay < kLongestDelayMillis ? delay : 0;
}

/// Whether the dialog, at `time`, had not been there for as long as a double click takes.
bool had_just_appeared(const Guard& guard, guint32 time) {
    if (GTK_IS_DIALOG(guard.window) == 0)
        return false;
    const gint64 age = (g_get_monotonic_time() - guard.drawn) / kMicrosPerMilli;
    return guard.drawn == 0 || age - delay_millis(time) <= double_click_millis();
}

void on_pressed(GtkGestureMultiPress* gesture, gint, gdouble, gdouble, Guard* guard) {
    GdkEventSequence* const sequence =
        gtk_gesture_single_get_current_sequence(GTK_GESTURE_SINGLE(gesture));
    const GdkEvent* const event = gtk_gesture_get_last_event(GTK_GESTURE(gesture), sequence);
    GtkWidget* const target = gtk_get_event_widget(const_cast<GdkEvent*>(event));
    auto press = last_press;
    press.time = gdk_event_get_time(event);
    press.window = gtk_widget_get_toplevel(target);
    press.button = push_button(target);

    const bool is_next =
        press.time - last_press.time <= static_cast<guint32>(double_click_millis());
    const bool began_elsewhere = press.window != last_press.window || last_press.ignored ||
                                 (press.button != nullptr && press.button == last_press.button);
    press.ignored = (is_next && began_elsewhere) || had_just_appeared(*guard, press.time);
    last_press = press;
    if (press.ignored)
        gtk_gesture_set_state(GTK_GESTURE(gesture), GTK_EVENT_SEQUENCE_CLAIMED);
}

bool presses_buttons(guint key) {
    return key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter ||
           key == GDK_KEY_space || key == GDK_KEY_KP_Space;
}

/// Sees each event for the window's keyboard focus before the window itself does; true ends it.
gboolean on_event(GtkWidget* window, GdkEvent* event, gpointer) {
    if (event->type != GDK_KEY_PRESS || !presses_buttons(event->key.keyval))
        return FALSE;
    const GdkEventKey& key = event->key;
    const bool repeated =
        key.hardware_keycode == held_key.code && key.time - held_key.time < kLongestRepeatMillis;
    if (!repeated)
        held_key = {key.hardware_keycode, key.time, window};
    held_key.time = key.time;
    const bool pressed_elsewhere = held_key.window != window;
    return repeated &&
           (pressed_elsewhere || GTK_IS_BUTTON(gtk_window_get_focus(GTK_WINDOW(window))) != 0);
}

gboolean on_draw(GtkWidget* window, void*, Guard* guard) {
    guard->drawn = g_get_monotonic_time();
    g_signal_handlers_disconnect_by_func(window, reinterpret_cast<gpointer>(on_draw), guard);
    return FALSE;
}

void guard_window(GtkWidget* window) {
    auto* const guard = new Guard{window, gtk_gesture_multi_press_new(window)};
    g_object_set_data_full(G_OBJECT(window), kGuard, guard,
                           [](gpointer data) { delete static_cast<Guard*>(data); });
    gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(guard->clicks), 0);  // any
    // Ahead of what the pointer is over.
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(guard->clicks),
                                               GTK_PHASE_CAPTURE);
    g_signal_connect(guard->clicks, "pressed", G_CALLBACK(on_pressed), guard);
    g_signal_connect(window, "event", G_CALLBACK(on_event), nullptr);
    g_signal_connect_after(window, "draw", G_CALLBACK(on_draw), guard);
}

GtkWidget* sender(const GValue* values) {
    return GTK_WIDGET(g_value_get_object(values));
}

gboolean on_map(GSignalInvocationHint*, guint, const GValue* values, gpointer) {
    GtkWidget* const widget = sender(values);
    if (GTK_IS_WINDOW(widget) != 0 &&
        gtk_window_get_window_type(GTK_WINDOW(widget)) == GTK_WINDOW_TOPLEVEL &&
        g_object_get_data(G_OBJECT(widget), kGuard) == nullptr)
        guard_window(widget);
    return TRUE;  // stays
}

/// A button that is being pressed by a key takes the release for itself: no window sees it.
gboolean on_key_release(GSignalInvocationHint*, guint, const GValue* values, gpointer) {
    const auto* const key = static_cast<const GdkEventKey*>(g_value_get_boxed(values + 1));
    if (key->hardware_keycode == held_key.code)
        held_key = {};
    return TRUE;  // stays
}

}  // namespace

void ignore_stray_input() {
    static bool done = false;
    if (done)
        return;
    done = true;
    // The toolkit creates its message boxes internally: nobody else has access to them.
    g_type_class_unref(g_type_class_ref(GTK_TYPE_WIDGET));
    g_signal_add_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), 0, on_map, nullptr,
                               nullptr);
    g_signal_add_emission_hook(g_signal_lookup("key-release-event", GTK_TYPE_WIDGET), 0,
                               on_key_release, nullptr, nullptr);
}
