#pragma once

#include <optional>
#include <string>

#include "notify/notice_text.h"

using GDBusConnection = struct _GDBusConnection;
using GVariant = struct _GVariant;

/// The desktop's notification service on the session's message bus.
class SessionBus {
  public:
    /// Connects to the running bus; does not start one.
    SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// True when the service is running; does not start it.
    bool has_notifications() const;

    /// True when the service treats a notification's body as markup.
    bool reads_markup() const;

    /// Shows the message in place of the notification with that number, if not empty. Returns its
    /// own number, empty when it was not shown.
    std::string show(const notices::Message& message, const std::string& replaces) const;

  private:
    /// The answer to a call, owned by the caller; null after a failure or after two seconds.
    GVariant* call(const char* service, const char* path, const char* method,
                   GVariant* arguments) const;

    GDBusConnection* bus_ = nullptr;
};
