#include "web/pages.h"

#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/panel.h>

#include <algorithm>

#include "app/Vantreo.h"
#include "app/accessibility.h"
#include "app/contrast.h"
#include "web/page_html.h"

namespace {

constexpr int kBorder = 10;  // around a page in its box, in pixels: the toolkit's own

/// As HTML writes it.
wxString page_colour(const wxWindow& background) {
    return opaque_page_colour(background.GetBackgroundColour()).GetAsString(wxC2S_HTML_SYNTAX);
}

}  // namespace

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
    return link_page(page_colour(*panelOptions), page_address("FR/Traductions", "Translations"),
                     Translate("htmlTranslations", 0));
}

wxString Vantreo::subtitle_page(const wxWindow& background) {
    return link_page(page_colour(background),
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
    return about_page_html(page_colour(*panelAbout), texts);
}
