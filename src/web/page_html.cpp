#include "web/page_html.h"

#include "base/version_text.h"
#include "web/site.h"

namespace {

wxString body_tag(const wxString& background) {
    return "<body bgcolor=" + background + ">";
}

}  // namespace

wxString link_page(const wxString& background, const wxString& address, const wxString& text) {
    return body_tag(background) + "<a href=" + address + ">" + text + "</a>";
}

wxString about_page_html(const wxString& background, const AboutTexts& texts) {
    return body_tag(background) + "<p align=center>" +        //
           "<font size=6><b>Vantreo</b> " + version_text() +  //
           " for " + platform_word() +                        //
           "</font><br>Vantreo project<br>written by its contributors<br><br>" +
           texts.translations +                                                       //
           " <a href=" + texts.thanksAddress + ">" + texts.thanks + "</a><br><br>" +  //
           texts.contact +                                                            //
           "<br><a href=" + texts.contactAddress + ">" + texts.contactAddress +       //
           "</a><br><br><b>" + texts.youLike + "</b><br>" + texts.donate + "</p></body>";
}
