#pragma once

#include <wx/gdicmn.h>
#include <wx/html/htmlcell.h>
#include <wx/string.h>

#include <vector>

class wxHtmlWindow;

/// A link of the page that an HTML box shows.
struct PageLink {
    wxHtmlLinkInfo info;
    wxString text;              ///< as shown, without blanks at its ends
    std::vector<wxRect> lines;  ///< its words' place in each line, in pixels of the client area
};

bool operator==(const PageLink& one, const PageLink& other);

/// The links of the page as it is laid out now, in reading order.
std::vector<PageLink> links_on_page(const wxHtmlWindow& box);
