#pragma once

class wxString;

/// Opens the address in the user's browser and does not wait for it. False, with one line on the
/// console, if no browser can be started. A browser that fails later, or an xdg-open that finds no
/// browser, is not noticed.
bool open_in_browser(const wxString& address);
