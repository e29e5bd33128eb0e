#include "app/gtk_html_colours.h"

#include <wx/html/htmlwin.h>
// htmlproc.h needs htmlwin.h first.
#include <wx/html/htmlproc.h>
#include <wx/panel.h>
#include <wx/settings.h>

#include "app/contrast.h"

namespace {

const wxString kBodyTag = "<body ";

/// Adds the colours to the tag that opens a page's body.
class ThemeColours : public wxHtmlProcessor {
  public:
    wxString Process(const wxString& page) const override {
        wxString rest;
        if (!page.StartsWith(kBodyTag, &rest))
            return page;
        const wxVisualAttributes look = wxPanel::GetClassDefaultAttributes();
        const wxColour paper = opaque_page_colour(look.colBg);
        const wxColour text = opaque_on(paper, look.colFg);
        const wxColour link =
            readable_on(paper, wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT), text);
        return kBodyTag + "text=" + text.GetAsString(wxC2S_HTML_SYNTAX) +
               " link=" + link.GetAsString(wxC2S_HTML_SYNTAX) + " " + rest;
    }
};

}  // namespace

void apply_theme_to_html() {
    static ThemeColours* const applied = [] {
        auto* const colours = new ThemeColours;
        wxHtmlWindow::AddGlobalProcessor(colours);  // which owns it
        return colours;
    }();
    static_cast<void>(applied);
}
