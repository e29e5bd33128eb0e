#pragma once

#include <wx/colour.h>
#include <wx/string.h>

class wxHtmlWindow;

// The HTML that the window's three link boxes show. Attribute values carry no quotation marks, and
// the link page has no closing body tag.

/// What is seen of the background that the toolkit reports for a control, in front of the theme's
/// windows: some themes have a translucent one, and HTML knows no such colours.
wxColour opaque_page_colour(const wxColour& background);

/// A page that is one link: `text` leading to `address`, on `background`.
wxString link_page(const wxColour& background, const wxString& address, const wxString& text);

/// What the About page is made of.
struct AboutTexts {
    wxString translations;  ///< before the link to the thanks page
    wxString thanks;        ///< the text of that link
    wxString contact;       ///< above the contact link
    wxString youLike;       ///< in bold, above the call for a donation
    wxString donate;
    wxString thanksAddress;
    wxString contactAddress;  ///< also the visible text of its link
};

wxString about_page_html(const wxColour& background, const AboutTexts& texts);

/// Shows the page in the box, with a narrower border where it would not fit, and lets a screen
/// reader name the box by the page's text.
void show_page(wxHtmlWindow& box, const wxString& page);
