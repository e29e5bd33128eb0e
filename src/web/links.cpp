// The window's links to the product web site. A link opens in the browser and is not followed
// inside its box.

#include <wx/html/htmlwin.h>
#include <wx/utils.h>

#include "app/Vantreo.h"
#include "web/site.h"

namespace {

constexpr const wchar_t* kFrench = L"Fran\u00e7ais";

void open_link(const wxHtmlLinkEvent& event) {
    wxLaunchDefaultBrowser(event.GetLinkInfo().GetHref(), 0);
}

}  // namespace

wxString Vantreo::page_address(const wxString& french, const wxString& other) {
    return site_base() + (config_read("Language") == kFrench ? french : other);
}

void Vantreo::OnhtmlSubtitle(wxHtmlLinkEvent& event) {
    open_link(event);
}

void Vantreo::OnhtmlTranslations(wxHtmlLinkEvent& event) {
    open_link(event);
}

void Vantreo::OnhtmlAbout(wxHtmlLinkEvent& event) {
    open_link(event);
}

void Vantreo::OnbuttonDonate(wxCommandEvent&) {
    wxLaunchDefaultBrowser(page_address("FR/Faire_un_Don", "Donate"), 0);
}
