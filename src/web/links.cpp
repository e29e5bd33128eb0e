// The window's links to the product web site. A link opens in the browser and is not followed
// inside its box.

#include <wx/html/htmlwin.h>

#include "app/Vantreo.h"
#include "web/browser.h"
#include "web/site.h"

namespace {

constexpr const wchar_t* kFrench = L"Fran\u00e7ais";

}  // namespace

void Vantreo::open_page(const wxString& address) {
    if (!open_in_browser(address))
        ShowMessage(address, wxOK | wxICON_HAND);
}

wxString Vantreo::page_address(const wxString& french, const wxString& other) {
    return site_base() + (config_read("Language") == kFrench ? french : other);
}

void Vantreo::OnhtmlSubtitle(wxHtmlLinkEvent& event) {
    open_page(event.GetLinkInfo().GetHref());
}

void Vantreo::OnhtmlTranslations(wxHtmlLinkEvent& event) {
    open_page(event.GetLinkInfo().GetHref());
}

void Vantreo::OnhtmlAbout(wxHtmlLinkEvent& event) {
    open_page(event.GetLinkInfo().GetHref());
}

void Vantreo::OnbuttonDonate(wxCommandEvent&) {
    open_page(page_address("FR/Faire_un_Don", "Donate"));
}
