#pragma once

class wxString;

/// Opens the address in the user's browser, which runs on its own. False, with one line on the
/// console, where no browser can be started. A browser that fails after its start is not noticed;
/// nor is an xdg-open that finds none.
bool open_in_browser(const wxString& address);
