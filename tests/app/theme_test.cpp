// The window in the colours of the desktop's theme.

#include <gtk/gtk.h>
#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/iconbndl.h>
#include <wx/notebook.h>
#include <wx/panel.h>

#include "app/contrast.h"
#include "support/frame_test.h"
#include "support/html_links.h"

namespace {

class Theme : public FrameTest {
  protected:
    ~Theme() override { choose("Adwaita"); }

    static void choose(const char* name) {
        g_object_set(gtk_settings_get_default(), "gtk-theme-name", name, nullptr);
        run_pending_events();
    }

    void expect_pages_in_the_themes_colours() {
        const std::pair<wxHtmlWindow*, wxPanel*> boxes[] = {
            {frame->htmlTranslations, frame->panelOptions},
            {frame->htmlSubtitle, frame->panelOptions},
            {frame->htmlAbout, frame->panelAbout}};
        for (const auto& [box, page] : boxes) {
            const wxColour background = page->GetBackgroundColour();
            EXPECT_EQ(page_colour(box), background);
            const std::vector<wxColour> inks = text_colours(box);
            EXPECT_GE(inks.size(), 2U) << "a text's and a link's";
            for (const wxColour& ink : inks)
                EXPECT_GE(contrast(ink, background), 4.5) << ink.GetAsString();
        }
    }
};

}  // namespace

TEST_F(Theme, IsFollowedWhenItChanges) {
    choose("Adwaita");
    start();
    const wxColour light = frame->panelAbout->GetBackgroundColour();
    expect_pages_in_the_themes_colours();

    choose("HighContrastInverse");
    EXPECT_NE(frame->panelAbout->GetBackgroundColour(), light);
    expect_pages_in_the_themes_colours();

    choose("Adwaita");
    EXPECT_EQ(frame->panelAbout->GetBackgroundColour(), light);
    expect_pages_in_the_themes_colours();
}

TEST_F(Theme, GivesTheWindowAnIconInTheUsualSizes) {
    start();
    const wxIconBundle& icons = frame->GetIcons();
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        const wxIcon icon = icons.GetIcon(wxSize(side, side), wxIconBundle::FALLBACK_NONE);
        ASSERT_TRUE(icon.IsOk()) << side;
        EXPECT_EQ(icon.GetSize(), wxSize(side, side));
    }
}
