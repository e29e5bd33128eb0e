// The run: probes every movie of the list, then converts them one after the other.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/gauge.h>
#include <wx/listbox.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include <algorithm>

#include "app/Vantreo.h"
#include "convert/Movie.h"

namespace {

constexpr long kQuestion = wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION;
constexpr long kError = wxOK | wxICON_HAND;

}  // namespace

void Vantreo::OnbuttonConvert(wxCommandEvent&) {
    if (buttonConvert->GetLabel() != Translate("buttonConvert", 0)) {
        Cancel();
        return;
    }
    movieIndex = 0;
    movies.clear();
    free_ended_jobs();
    layout_converting(0);
    MovieInfos(nullptr);
}

void Vantreo::MovieInfos(Movie* movie) {
    if (movie == nullptr) {
        movies.resize(movieIndex);
        movies.push_back(new_job());
        movies.back()->Infos();
        return;
    }
    if (!is_current(movie))
        return;
    const Movie& job = *movies[movieIndex];
    if (!job.error.empty()) {
        stop_at_error(job);
        return;
    }
    if (!job.confirm.empty() && checkboxOverwrite->IsChecked() &&
        ShowMessage(job.output_path + ":\n" + Translate("confirmOverwrite", 0), kQuestion) ==
            wxID_NO) {
        layout_canceled();
        return;
    }
    if (movieIndex + 1 >= textMovies->GetCount()) {
        movieIndex = 0;
        MovieConvert(nullptr);
    } else {
        ++movieIndex;
        MovieInfos(nullptr);
    }
}

void Vantreo::stop_at_error(const Movie& movie) {
    // A missing tool concerns no particular movie.
    const bool named = !movie.path.empty() && movie.error != "error_ffmpeg";
    const wxString prefix = named ? movie.path + ":\n" : wxString();
    if (ShowMessage(prefix + Translate(movie.error, 0), kError) != wxID_OK)
        return;
    if (textMovies->IsEmpty())
        layout_error();
    else
        layout_canceled();
}

void Vantreo::MovieConvert(Movie* movie) {
    if (movie == nullptr) {
        layout_converting(movieIndex + 1);
        movies[movieIndex]->Convert();
        return;
    }
    const bool subtitleDue = !movie->mp4box_command.empty() && movie->mode != "subtitle";
    if (subtitleDue) {
        layout_subtitle(movieIndex + 1);
        movie->Subtitle();
    } else if (movieIndex + 1 < textMovies->GetCount()) {
        ++movieIndex;
        MovieConvert(nullptr);
    } else {
        layout_converted();
    }
}

void Vantreo::MovieUpdate(Movie* movie) {
    const wxString percent = wxString::Format("%i%%", static_cast<int>(movie->percent));
    SetTitle(percent + " - Vantreo");
    labelElapsedTime->SetLabel(Movie::seconds_to_duration(movie->elapsed));
    labelRemainingTime->SetLabel(movie->time_remaining(-1, -1));
    labelPercent->SetLabel(percent);
    // MP4Box's own figure is not limited; the gauge takes no more than its range.
    gaugeProgress->SetValue(std::clamp<int>(movie->percent, 0, gaugeProgress->GetRange()));
}

bool Vantreo::Cancel() {
    wxWindow* const focused = FindFocus();
    if (ShowMessage(Translate("confirmCancel", 0), kQuestion) != wxID_YES)
        return false;
    if (movieIndex < movies.size()) {
        // Whoever presses a button while the tools end means the window as it was before.
        const wxWindowDisabler disabled;
        movies[movieIndex]->Cancel();
    }
    layout_canceled();
    if (focused != nullptr)
        focused->SetFocus();  // which the disabled window has lost
    return true;
}
