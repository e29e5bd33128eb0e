#include "web/page_links.h"

#include <wx/html/htmlwin.h>

#include <algorithm>

namespace {

bool same_target(const wxHtmlLinkInfo& one, const wxHtmlLinkInfo& other) {
    return one.GetHref() == other.GetHref() && one.GetTarget() == other.GetTarget();
}

bool in_one_line(const wxRect& one, const wxRect& other) {
    return one.GetTop() <= other.GetBottom() && other.GetTop() <= one.GetBottom();
}

void add_word(PageLink& link, const wxHtmlCell& word, const wxHtmlWindow& box) {
    link.text += word.ConvertToText(nullptr);
    const wxRect place(box.CalcScrolledPosition(word.GetAbsPos()),
                       wxSize(word.GetWidth(), word.GetHeight()));
    if (!link.lines.empty() && in_one_line(link.lines.back(), place))
        link.lines.back().Union(place);
    else
        link.lines.push_back(place);
}

/// Collects links from a row of cells. Every word of a link has a copy of its target, so a link is
/// what follows without another word in between.
class Collector {
  public:
    explicit Collector(const wxHtmlWindow& page) : box(page) {}

    void collect(const wxHtmlCell* cell) {
        for (; cell != nullptr; cell = cell->GetNext()) {
            if (!cell->IsTerminalCell())
                collect(cell->GetFirstChild());
            else if (!cell->IsFormattingCell())
                take(*cell);
        }
    }

    std::vector<PageLink> links;

  private:
    void take(const wxHtmlCell& word) {
        const wxHtmlLinkInfo* const target = word.GetLink();
        if (target != nullptr) {
            if (!inLink || !same_target(links.back().info, *target))
                links.push_back({wxHtmlLinkInfo(target->GetHref(), target->GetTarget()), "", {}});
            add_word(links.back(), word, box);
        }
        inLink = target != nullptr;
    }

    const wxHtmlWindow& box;
    bool inLink = false;
};

}  // namespace

bool operator==(const PageLink& one, const PageLink& other) {
    return same_target(one.info, other.info) && one.text == other.text && one.lines == other.lines;
}

std::vector<PageLink> links_on_page(const wxHtmlWindow& box) {
    Collector collector(box);
    collector.collect(box.GetInternalRepresentation());
    for (PageLink& link : collector.links) {
        link.text.Replace(L"\u00a0", " ");
        link.text.Trim(true).Trim(false);
    }
    return std::move(collector.links);
}
