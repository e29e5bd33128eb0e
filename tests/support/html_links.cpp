#include "support/html_links.h"

#include <wx/dcmemory.h>
#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>

#include <algorithm>

namespace {

void collect_links(const wxHtmlCell* cell, Links& links) {
    for (; cell != nullptr; cell = cell->GetNext()) {
        if (const wxHtmlLinkInfo* link = cell->GetLink())
            links.push_back(link->GetHref());
        collect_links(cell->GetFirstChild(), links);
    }
}

void collect_colours(const wxHtmlCell* cell, wxDC& dc, std::vector<wxColour>& colours) {
    for (; cell != nullptr; cell = cell->GetNext()) {
        if (const auto* change = dynamic_cast<const wxHtmlColourCell*>(cell)) {
            wxHtmlRenderingInfo info;
            const_cast<wxHtmlColourCell*>(change)->DrawInvisible(dc, 0, 0, info);
            if (info.GetState().GetFgColour().IsOk())
                colours.push_back(info.GetState().GetFgColour());
        }
        collect_colours(cell->GetFirstChild(), dc, colours);
    }
}

}  // namespace

Links links_of(const wxHtmlWindow* box) {
    Links links;
    collect_links(box->GetInternalRepresentation(), links);
    links.erase(std::unique(links.begin(), links.end()), links.end());
    return links;
}

wxColour page_colour(const wxHtmlWindow* box) {
    // The page's body sets the box's own colour.
    return box->GetInternalRepresentation()->GetBackgroundColour().IsOk()
               ? box->GetInternalRepresentation()->GetBackgroundColour()
               : box->GetBackgroundColour();
}

std::vector<wxColour> text_colours(const wxHtmlWindow* box) {
    std::vector<wxColour> colours;
    wxBitmap bitmap(1, 1);
    wxMemoryDC dc(bitmap);
    collect_colours(box->GetInternalRepresentation(), dc, colours);
    // The first is the toolkit's own black, which no text has.
    colours.erase(colours.begin());
    return colours;
}
