#include "input/gtk_every_file.h"

#include <gtk/gtk.h>
#include <wx/filedlg.h>

void show_every_file(wxFileDialog& dialog) {
    GtkFileChooser* const chooser = GTK_FILE_CHOOSER(dialog.GetHandle());
    GSList* const filters = gtk_file_chooser_list_filters(chooser);
    for (const GSList* filter = filters; filter != nullptr; filter = filter->next)
        gtk_file_chooser_remove_filter(chooser, GTK_FILE_FILTER(filter->data));
    g_slist_free(filters);
}
