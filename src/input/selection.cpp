// Choosing the movies and the output folder. During a run the list and the field are disabled, and
// events that still reach these handlers change nothing.

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include "app/Vantreo.h"
#include "input/dialog_folders.h"
#include "input/movie_list.h"
#ifdef __WXGTK__
#include "input/gtk_file_dialogs.h"
#endif

void Vantreo::OnbuttonMovies(wxCommandEvent&) {
    if (!textMovies->IsThisEnabled())
        return;
    dialogMovies = new wxFileDialog(dialogParent, "", "", "", "*.*",
                                    wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxFD_MULTIPLE);
    dialogMovies->SetDirectory(movie_dialog_folder(lastMovieFolder));
#ifdef __WXGTK__
    show_every_file(*dialogMovies);
    hide_current_folder(*dialogMovies);
#endif
    if (dialogMovies->ShowModal() == wxID_OK) {
        wxArrayString paths;
        dialogMovies->GetPaths(paths);
        add_movies(*textMovies, paths);
        if (!paths.empty())
            lastMovieFolder = wxFileName(paths[0]).GetPath();
    }
    layout_movies();
}

void Vantreo::OntextMoviesKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key != WXK_DELETE && key != WXK_BACK) {
        event.Skip();
    } else if (textMovies->IsThisEnabled()) {
        const int selected = textMovies->GetSelection();
        if (selected != wxNOT_FOUND)
            textMovies->Delete(static_cast<unsigned int>(selected));
    }
    layout_movies();
}

void Vantreo::OnbuttonOutput(wxCommandEvent&) {
    if (!textOutput->IsThisEnabled())
        return;
    dialogOutput = new wxDirDialog(dialogParent, "", config_read("Output"),
                                   wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    dialogOutput->SetPath(output_dialog_folder(config_read("Output")));
#ifdef __WXGTK__
    hide_current_folder(*dialogOutput);
#endif
    if (dialogOutput->ShowModal() == wxID_OK)
        textOutput->SetValue(dialogOutput->GetPath());
}

void Vantreo::OntextOutput(wxCommandEvent&) {
    config_write("Output", textOutput->GetValue());
}
