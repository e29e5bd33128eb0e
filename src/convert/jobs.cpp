// How the frame makes, recognises and frees its jobs.

#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include "app/Vantreo.h"
#include "convert/Movie.h"
#include "tools/FFmpeg.h"

Movie::Movie(Vantreo* owner, const wxString& source, const wxString& folder, int device)
    : path(source), frame(owner), output_dir(folder), optimize(device), listener(owner) {}

Movie* Vantreo::new_job() {
    const wxString path = textMovies->IsEmpty() ? wxString() : textMovies->GetString(movieIndex);
    jobs.push_back(std::make_unique<Movie>(this, path, textOutput->GetValue(),
                                           comboboxOptimize->GetSelection()));
    return jobs.back().get();
}

/// False for a job of an earlier run, whose probe went on after that run had stopped at its error.
bool Vantreo::is_current(const Movie* movie) const {
    return movieIndex < movies.size() && movies[movieIndex] == movie;
}

void Vantreo::free_ended_jobs() {
    std::erase_if(jobs, [](const auto& job) { return job->Ended(); });
}
