#include "web/pages.h"

#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/panel.h>
#include <wx/settings.h>

#include <algorithm>

#include "app/Vantreo.h"
#include "app/accessibility.h"
#include "app/contrast.h"
#include "app/version_text.h"
#include "web/site.h"

namespace {

constexpr int kBorder = 10;  // around a page in its box, in pixels: the toolkit's own

wxString body_tag(const wxColour& background) {
    return "<body bgcolor=" + background.GetAsString(wxC2S_HTML_SYNTAX) + ">";
}

}  // namespace

wxColour opaque_page_colour(const wxColour& background) {
    return opaque_on(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW), background);
}

wxString link_page(const wxColour& background, const wxString& address, const wxString& text) {
    return body_tag(background) + "<a href=" + address + ">" + text + "</a>";
}

wxString about_page_html(const wxColour& background, const AboutTexts& texts) {
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

void show_page(wxHtmlWindow& box, const wxString& page) {
    box.SetBorders(kBorder);
    box.SetPage(page);
    // The cell begins and ends with a border; the words need only the first.
    const int end = box.GetInternalRepresentation()->GetHeight() - kBorder;
    const int missing = std::clamp(end - box.GetClientSize().y, 0, kBorder);
    if (missing > 0) {
        box.SetBorders(kBorder - missing);
        box.SetPage(page);
    }
    name_control(box, box.ToText().Trim(true).Trim(false));
}

wxString Vantreo::translations_page() {
    return link_page(opaque_page_colour(panelOptions->GetBackgroundColour()),
                     page_address("FR/Traductions", "Translations"),
                     Translate("htmlTranslations", 0));
}

wxString Vantreo::subtitle_page(const wxWindow& background) {
    return link_page(opaque_page_colour(background.GetBackgroundColour()),
                     page_address("FR/Comment_ajouter_les_sous-titres_a_la_video_iPhone",
                                  "How_to_add_subtitles_to_the_iPhone_video"),
                     Translate("htmlSubtitle", 0));
}

wxString Vantreo::about_page() {
    AboutTexts texts;
    texts.donate = Translate("htmlAboutDonate", 0);
    texts.youLike = Translate("htmlAboutYouLike", 0);
    texts.contact = Translate("htmlAboutContact", 0);
    texts.thanks = Translate("htmlAboutTranslations_2", 0);
    texts.translations = Translate("htmlAboutTranslations_1", 0);
    texts.thanksAddress = page_address("FR/Remerciements", "Greetings");
    texts.contactAddress = page_address("FR/Contact", "Contact");
    return about_page_html(opaque_page_colour(panelAbout->GetBackgroundColour()), texts);
}
