#include "input/gtk_file_dialogs.h"

#include <gtk/gtk.h>
#include <wx/filedlg.h>

void show_every_file(wxFileDialog& dialog) {
    GtkFileChooser* const chooser = GTK_FILE_CHOOSER(dialog.GetHandle());
    GSList* const filters = gtk_file_chooser_list_filters(chooser);
    for (const GSList* filter = filters; filter != nullptr; filter = filter->next)
        gtk_file_chooser_remove_filter(chooser, GTK_FILE_FILTER(filter->data));
    g_slist_free(filters);
}

void hide_current_folder(const wxDialog& dialog) {
    const auto on_map = +[](GtkFileChooser* chooser) {
        char* const current = g_get_current_dir();
        gtk_file_chooser_remove_shortcut_folder(chooser, current, nullptr);
        g_free(current);
    };
    g_signal_connect_after(dialog.GetHandle(), "map", G_CALLBACK(on_map), nullptr);
}
