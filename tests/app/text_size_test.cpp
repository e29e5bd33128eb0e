// The size of the window's and its dialogs' texts when the desktop changes its own.

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/notebook.h>
#include <wx/panel.h>

#include "support/desktop_settings.h"
#include "support/frame_test.h"
#include "support/message_box.h"
#include "support/misfits.h"

namespace {

constexpr int kAdwaitaButtonHeight = 34;  // in pixels, with text of the default size

class TextSize : public FrameTest {
  protected:
    TextSize() { start(); }

    /// The sizes of the pages' texts: a change of any is visible.
    std::vector<wxSize> sizes() const {
        const GtkWidget* const check = checkbox_label();
        PangoLayout* const label = gtk_label_get_layout(GTK_LABEL(check));
        std::vector<wxSize> found(1);
        pango_layout_get_pixel_size(label, &found[0].x, &found[0].y);
        found.push_back(frame->buttonMovies->GetTextExtent("Movies"));
        found.push_back(frame->buttonMovies->GetBestSize());
        for (const wxHtmlWindow* box : {frame->htmlSubtitle, frame->htmlAbout}) {
            const wxHtmlContainerCell* const page = box->GetInternalRepresentation();
            found.emplace_back(page->GetMaxTotalWidth(), page->GetHeight());
        }
        return found;
    }

    /// Updates the boxes as a new language or a new theme does.
    void show_pages_again() const {
        wxSysColourChangedEvent event;
        frame->ProcessWindowEvent(event);
    }

    void expect_fit() const {
        for (size_t page = 0; page < frame->notebook->GetPageCount(); ++page) {
            frame->notebook->SetSelection(page);
            run_pending_events();
            for (const wxString& misfit :
                 misfits(*static_cast<wxPanel*>(frame->notebook->GetPage(page))))
                ADD_FAILURE() << misfit;
        }
    }

  private:
    const GtkWidget* checkbox_label() const {
        return gtk_bin_get_child(GTK_BIN(frame->checkboxOverwrite->GetHandle()));
    }
};

/// The height of the texts in a file dialog, in pixels.
double file_dialog_text() {
    GtkWidget* const dialog = gtk_file_chooser_dialog_new("", nullptr, GTK_FILE_CHOOSER_ACTION_OPEN,
                                                          "Open", GTK_RESPONSE_ACCEPT, nullptr);
    GtkStyleContext* const style = gtk_widget_get_style_context(
        gtk_dialog_get_widget_for_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT));
    double size = 0;
    gtk_style_context_get(style, gtk_style_context_get_state(style), "font-size", &size, nullptr);
    gtk_widget_destroy(dialog);
    return size;
}

bool desktop_says(const char* name, const wxString& wanted) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_STRING);
    const bool found = gdk_screen_get_setting(gdk_screen_get_default(), name, &value) != FALSE &&
                       wxString::FromUTF8(g_value_get_string(&value)) == wanted;
    g_value_unset(&value);
    return found;
}

}  // namespace

TEST_F(TextSize, StaysWhenTheDesktopsTextsGrow) {
    const std::vector<wxSize> before = sizes();
    const int message = MessageBox(*frame).text_height();
    const double files = file_dialog_text();
    DesktopSettings desktop("Gtk/FontName \"Sans 10\"\nXft/DPI 98304");
    ASSERT_TRUE(wait_until([] { return desktop_says("gtk-font-name", "Sans 10"); }));

    desktop.change("Gtk/FontName \"Sans 11\"\nXft/DPI 147456");
    ASSERT_TRUE(wait_until([] { return desktop_says("gtk-font-name", "Sans 11"); }));
    run_pending_events();
    show_pages_again();
    EXPECT_EQ(sizes(), before);
    expect_fit();

    EXPECT_GT(file_dialog_text(), files * 1.4);
    const MessageBox box(*frame);
    EXPECT_GT(box.text_height(), message * 1.4) << "a message box follows the desktop";
    EXPECT_EQ(box.misfits(), std::vector<wxString>());
}

TEST_F(TextSize, StaysWhenTheDisplaysResolutionChanges) {
    const std::vector<wxSize> before = sizes();
    // The toolkit does the same on Wayland when the desktop's text size grows.
    gdk_screen_set_resolution(gdk_screen_get_default(), 144);
    run_pending_events();
    show_pages_again();
    EXPECT_EQ(sizes(), before);
    expect_fit();
}

TEST_F(TextSize, LeavesTheButtonsOfAMessageBoxTheirHeight) {
    EXPECT_GE(MessageBox(*frame).button_height(), kAdwaitaButtonHeight);
    EXPECT_LT(frame->buttonConvert->GetSize().y, kAdwaitaButtonHeight);
}
