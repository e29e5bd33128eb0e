// The two boxes of the Options page that cannot be typed in.

#include <gtk/gtk.h>
#include <wx/combobox.h>
#include <wx/notebook.h>

#include "support/frame_test.h"

namespace {

class ChoiceBoxes : public FrameTest {
  protected:
    /// Expects the same pointer over the box's text as over the page.
    static void expect_no_text_cursor(const wxComboBox* box) {
        GtkWidget* const entry = gtk_bin_get_child(GTK_BIN(box->GetHandle()));
        ASSERT_TRUE(gtk_widget_get_realized(entry));
        int own = 0;
        GList* const windows = gdk_window_get_children(gtk_widget_get_window(entry));
        for (const GList* item = windows; item != nullptr; item = item->next) {
            auto* const window = static_cast<GdkWindow*>(item->data);
            gpointer owner = nullptr;
            gdk_window_get_user_data(window, &owner);
            if (owner == entry) {
                ++own;
                EXPECT_EQ(gdk_window_get_cursor(window), nullptr);
            }
        }
        g_list_free(windows);
        EXPECT_EQ(own, 1);
    }
};

}  // namespace

TEST_F(ChoiceBoxes, ShowNoTextCursorBeforeAndAfterARun) {
    start();
    frame->notebook->SetSelection(1);
    run_pending_events();
    for (const wxComboBox* box : {frame->comboboxLanguages, frame->comboboxOptimize})
        expect_no_text_cursor(box);
    frame->layout_converting(0);
    run_pending_events();
    frame->layout_canceled();
    run_pending_events();
    for (const wxComboBox* box : {frame->comboboxLanguages, frame->comboboxOptimize})
        expect_no_text_cursor(box);
}
