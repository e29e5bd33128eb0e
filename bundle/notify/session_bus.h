#pragma once

#include <optional>
#include <string>

#include "notify/notice_text.h"

using GDBusConnection = struct _GDBusConnection;
using GVariant = struct _GVariant;

/// The desktop's notification service on the session's message bus.
class SessionBus {
  public:
    /// Connects to the bus that runs; starts none.
    SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// True where the service runs. It is not started: a desktop has it running.
    bool has_notifications() const;

    /// True when the service reads a notification's body as markup.
    bool reads_markup() const;

    /// Shows the message, in place of the notification of that number if there is one; the number
    /// of the notification, empty when it was not shown.
    std::string show(const notices::Message& message, const std::string& replaces) const;

  private:
    /// The answer to a call, owned by the caller; null after a failure or two seconds.
    GVariant* call(const char* service, const char* path, const char* method,
                   GVariant* arguments) const;

    GDBusConnection* bus_ = nullptr;
};
