#include "support/message_box.h"

#include <gtk/gtk.h>

#include "support/frame_test.h"
#include "support/misfits.h"

MessageBox::MessageBox(const wxWindow& parent)
    : box(gtk_message_dialog_new(GTK_WINDOW(parent.GetHandle()), GTK_DIALOG_MODAL,
                                 GTK_MESSAGE_QUESTION, GTK_BUTTONS_YES_NO, "%s",
                                 "movie.mp4 already exists. Overwrite it?")) {
    bool isDrawn = false;
    const auto on_draw = +[](GtkWidget*, void*, gpointer drawn) -> gboolean {
        *static_cast<bool*>(drawn) = true;
        return FALSE;
    };
    const gulong handler = g_signal_connect(box, "draw", G_CALLBACK(on_draw), &isDrawn);
    gtk_widget_show_all(box);
    wait_until([&isDrawn] { return isDrawn; });
    g_signal_handler_disconnect(box, handler);
    run_pending_events();
}

MessageBox::~MessageBox() {
    gtk_widget_destroy(box);
    run_pending_events();
}

int MessageBox::text_height() const {
    GtkWidget* const area = gtk_message_dialog_get_message_area(GTK_MESSAGE_DIALOG(box));
    GList* const labels = gtk_container_get_children(GTK_CONTAINER(area));
    PangoLayout* const text = gtk_label_get_layout(GTK_LABEL(labels->data));
    g_list_free(labels);
    int height = 0;
    pango_layout_get_pixel_size(text, nullptr, &height);
    return height / pango_layout_get_line_count(text);
}

int MessageBox::button_height() const {
    return gtk_widget_get_allocated_height(
        gtk_dialog_get_widget_for_response(GTK_DIALOG(box), GTK_RESPONSE_YES));
}

std::vector<wxString> MessageBox::misfits() const {
    return misfits_of_texts(box);
}
