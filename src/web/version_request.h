#pragma once

#include <wx/string.h>

#include <chrono>
#include <optional>
#include <string_view>

/// The longest wait for the product web site at the start.
inline constexpr std::chrono::seconds kVersionRequestLimit{5};

/// The address that returns the number of the current release.
wxString version_request_address();

/// The first 1024 bytes of the reply from `address`, read as UTF-8. Plain http, through the
/// environment's proxy (see web_page.h); redirects are not followed. Empty if no reply begins
/// within `limit`, which includes the name look-up; of an incomplete reply, what has arrived by
/// then. Blocks; call on the GUI thread.
std::optional<wxString> request_reply(const wxString& address, std::chrono::milliseconds limit);

/// The reply's text; its last character may be incomplete. Empty for anything but UTF-8.
wxString reply_text(std::string_view bytes);

/// The release number between the markers of `reply`; 0 if there is none.
double released_version(const wxString& reply);
