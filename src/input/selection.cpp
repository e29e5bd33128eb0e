// Choosing the movies and the output folder. During a run the list and the field are disabled, and
// whatever still reaches these handlers changes nothing.

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include "app/Vantreo.h"
#include "input/movie_list.h"

void Vantreo::OnbuttonMovies(wxCommandEvent&) {
    if (!textMovies->IsThisEnabled())
        return;
    dialogMovies = new wxFileDialog(dialogParent, "", "", "", "*.*",
                                    wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxFD_MULTIPLE);
    if (dialogMovies->ShowModal() == wxID_OK) {
        wxArrayString paths;
        dialogMovies->GetPaths(paths);
        add_movies(*textMovies, paths);
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
    if (dialogOutput->ShowModal() == wxID_OK)
        textOutput->SetValue(dialogOutput->GetPath());
}

void Vantreo::OntextOutput(wxCommandEvent&) {
    config_write("Output", textOutput->GetValue());
}
