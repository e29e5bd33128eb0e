#pragma once

#include <wx/string.h>

// The HTML that the window's three link boxes show. Attribute values are not in quotation marks,
// and the link page has no closing body tag. A background is a colour as HTML writes it: "#F6F5F4".

/// A page that is one link: `text` leading to `address`.
wxString link_page(const wxString& background, const wxString& address, const wxString& text);

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

wxString about_page_html(const wxString& background, const AboutTexts& texts);
