#include "support/html_links.h"

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
