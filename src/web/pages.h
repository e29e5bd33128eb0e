#pragma once

class wxHtmlWindow;
class wxString;

/// Shows the page in the box, with a narrower border where it would not fit, and lets a screen
/// reader name the box by the page's text.
void show_page(wxHtmlWindow& box, const wxString& page);
