#include "notify/session_bus.h"

#include <gio/gio.h>

#include <charconv>

namespace {

constexpr const char* kNotifications = "org.freedesktop.Notifications";
constexpr const char* kNotificationsPath = "/org/freedesktop/Notifications";
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr int kLongestCallMs = 2000;
constexpr int kDesktopsOwnTime = -1;

/// The text as valid UTF-8, which the bus requires.
GVariant* text_of(const std::string& text) {
    return g_variant_new_take_string(
        g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())));
}

guint32 number_of(const std::string& digits) {
    guint32 number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

GVariant* hints() {
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string("vantreo"));
    g_variant_builder_add(&hints, "{sv}", "category", g_variant_new_string("transfer.error"));
    return g_variant_builder_end(&hints);
}

}  // namespace

SessionBus::SessionBus() : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
    if (bus_ != nullptr) {
        g_dbus_connection_set_exit_on_close(bus_, FALSE);
    }
}

SessionBus::~SessionBus() {
    g_clear_object(&bus_);
}

GVariant* SessionBus::call(const char* service, const char* path, const char* method,
                           GVariant* arguments) const {
    return g_dbus_connection_call_sync(bus_, service, path, service, method, arguments, nullptr,
                                       G_DBUS_CALL_FLAGS_NO_AUTO_START, kLongestCallMs, nullptr,
                                       nullptr);
}

bool SessionBus::has_notifications() const {
    GVariant* answer = bus_ == nullptr ? nullptr
                                       : call(kBus, kBusPath, "NameHasOwner",
                                              g_variant_new("(s)", kNotifications));
    gboolean is_there = FALSE;
    if (answer != nullptr) {
        g_variant_get(answer, "(b)", &is_there);
        g_variant_unref(answer);
    }
    return is_there != FALSE;
}

bool SessionBus::reads_markup() const {
    GVariant* answer = call(kNotifications, kNotificationsPath, "GetCapabilities", nullptr);
    if (answer == nullptr || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(as)"))) {
        g_clear_pointer(&answer, g_variant_unref);
        return true;
    }
    const char** words = nullptr;
    g_variant_get(answer, "(^a&s)", &words);
    const bool reads = g_strv_contains(words, "body-markup") != FALSE;
    g_free(words);
    g_variant_unref(answer);
    return reads;
}

std::string SessionBus::show(const notices::Message& message, const std::string& replaces) const {
    GVariant* arguments =
        g_variant_new("(su@s@s@s@as@a{sv}i)", "Vantreo", number_of(replaces), text_of("vantreo"),
                      text_of(message.summary), text_of(message.body),
                      g_variant_new_strv(nullptr, 0), hints(), kDesktopsOwnTime);
    GVariant* answer = call(kNotifications, kNotificationsPath, "Notify", arguments);
    guint32 number = 0;
    if (answer != nullptr) {
        if (g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)"))) {
            g_variant_get(answer, "(u)", &number);
        }
        g_variant_unref(answer);
    }
    return number == 0 ? std::string() : std::to_string(number);
}
