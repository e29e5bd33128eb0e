#pragma once

#include <wx/string.h>

#include <chrono>
#include <optional>
#include <string_view>

/// The longest that the program waits for the product web site at its start.
inline constexpr std::chrono::seconds kVersionRequestLimit{5};

/// Address that the current release's number is asked from.
wxString version_request_address();

/// The beginning of what `address` answers, at most 1024 bytes, read as UTF-8. Plain http, through
/// the environment's proxy (see web_page.h); a redirect is not followed. Nothing when no answer begins
/// within `limit` in all, name look-up included; of one that is not complete then, what has come.
/// Blocks; call it on the GUI thread.
std::optional<wxString> request_reply(const wxString& address, std::chrono::milliseconds limit);

/// The reply's text; the last character may be cut. Empty for anything but UTF-8.
wxString reply_text(std::string_view bytes);

/// The release number between the markers of `reply`; 0 where there is none.
double released_version(const wxString& reply);
