// The window and its message boxes in the themes of the usual desktops.

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/filefn.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include <algorithm>

#include "app/contrast.h"
#include "app/painting.h"
#include "support/frame_test.h"
#include "support/html_links.h"
#include "support/message_box.h"
#include "support/misfits.h"
#include "support/readability.h"

namespace {

class Themes : public FrameTest, public testing::WithParamInterface<const char*> {
  protected:
    Themes() {
        choose(GetParam());
        setting("Output", "/movies");
    }
    ~Themes() override {
        if (frame != nullptr)
            close();
        choose("Adwaita");
    }

    static void choose(const char* name) {
        g_object_set(gtk_settings_get_default(), "gtk-theme-name", name, "gtk-enable-animations",
                     FALSE, nullptr);
        run_pending_events();
    }

    static bool is_installed(const wxString& theme) {
        const bool is_part_of_the_toolkit = theme == "Adwaita" || theme.StartsWith("HighContrast");
        return is_part_of_the_toolkit || wxDirExists("/usr/share/themes/" + theme + "/gtk-3.0");
    }

    void show_page(size_t index) const {
        frame->notebook->SetSelection(index);
        run_pending_events();
        paint_now(*frame, 2);
    }

    void expect_readable(size_t page) const {
        show_page(page);
        for (const wxString& text :
             unreadable_texts(frame->GetHandle(), frame->labelStatus->GetLabel()))
            ADD_FAILURE() << text;
    }

    void expect_readable(const wxHtmlWindow* box) const {
        const wxColour paper = page_colour(box);
        for (const wxColour& ink : text_colours(box))
            EXPECT_GE(contrast(ink, paper), kReadableContrast)
                << ink.GetAsString() << " on " << paper.GetAsString();
    }

    void expect_fit(const wxString& language) {
        setting("Language", language);
        start();
        for (size_t page = 0; page < frame->notebook->GetPageCount(); ++page) {
            show_page(page);
            for (const wxString& misfit :
                 misfits(*static_cast<wxPanel*>(frame->notebook->GetPage(page))))
                ADD_FAILURE() << language << ": " << misfit;
        }
        close();
    }
};

// One of each kind: light, dark, high contrast, translucent.
const char* const kUsual[] = {
    "Adwaita", "Adwaita-dark", "HighContrastInverse", "Yaru-dark", "Breeze", "Greybird", "Orchis",
};

const char* const kOthers[] = {
    "HighContrast", "Yaru",          "Arc",         "Arc-Darker", "Arc-Dark",
    "Breeze-Dark",  "Greybird-dark", "Numix",       "Materia",    "Materia-light",
    "Materia-dark", "Orchis-Light",  "Orchis-Dark",
};

std::string name_of(const testing::TestParamInfo<const char*>& theme) {
    std::string name = theme.param;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    return name;
}

}  // namespace

TEST_P(Themes, KeepEveryTextReadable) {
    ASSERT_TRUE(is_installed(GetParam()));
    start();
    add({"a.avi", "b.avi"});
    for (size_t page = 0; page < frame->notebook->GetPageCount(); ++page)
        expect_readable(page);
    for (const wxHtmlWindow* box : {frame->htmlTranslations, frame->htmlSubtitle, frame->htmlAbout})
        expect_readable(box);
}

TEST_P(Themes, FitEveryText) {
    ASSERT_TRUE(is_installed(GetParam()));
    for (const wxString& language :
         {wxString("English"), wxString("Deutsch"), wxString::FromUTF8("русский язык")})
        expect_fit(language);
}

TEST_P(Themes, ShowTheEdgesOfButtons) {
    ASSERT_TRUE(is_installed(GetParam()));
    start();
    GtkWidget* const button = frame->buttonConvert->GetHandle();
    // Between the rounded corner and the text.
    const wxRect edge(20, 0, 1, frame->buttonConvert->GetSize().y + 4);
    EXPECT_FALSE(drawing_in(frame->GetHandle(), button, edge).IsEmpty());
}

TEST_P(Themes, DrawASquareCheckMark) {
    ASSERT_TRUE(is_installed(GetParam()));
    start();
    show_page(1);
    GtkWidget* const box = frame->checkboxHowToMove->GetHandle();
    GtkWidget* const label = gtk_bin_get_child(GTK_BIN(box));
    int end = 0;
    gtk_widget_translate_coordinates(label, box, 0, 0, &end, nullptr);
    const wxRect mark = drawing_in(frame->GetHandle(), box,
                                   wxRect(0, 0, end, frame->checkboxHowToMove->GetSize().y));
    EXPECT_NEAR(mark.width, mark.height, 2);
    EXPECT_GE(mark.height, 9);
}

TEST_P(Themes, KeepTheirMessageBoxes) {
    ASSERT_TRUE(is_installed(GetParam()));
    start();
    const MessageBox box(*frame);
    EXPECT_EQ(box.misfits(), std::vector<wxString>());
    EXPECT_EQ(unreadable_texts(box.widget()), std::vector<wxString>());
}

INSTANTIATE_TEST_SUITE_P(Usual, Themes, testing::ValuesIn(kUsual), name_of);
INSTANTIATE_TEST_SUITE_P(Other, Themes, testing::ValuesIn(kOthers), name_of);
