// The window's links to the product web site.

#include "app/Vantreo.h"
#include "web/site.h"

namespace {

constexpr const wchar_t* kFrench = L"Fran\u00e7ais";

}  // namespace

wxString Vantreo::page_address(const wxString& french, const wxString& other) {
    return site_base() + (config_read("Language") == kFrench ? french : other);
}

void Vantreo::OnhtmlSubtitle(wxHtmlLinkEvent&) {}

void Vantreo::OnhtmlTranslations(wxHtmlLinkEvent&) {}

void Vantreo::OnhtmlAbout(wxHtmlLinkEvent&) {}

void Vantreo::OnbuttonDonate(wxCommandEvent&) {}
