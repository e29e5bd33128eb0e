#include "app/Vantreo.h"

#include <wx/button.h>
#include <wx/filename.h>
#include <wx/stdpaths.h>

#include <utility>

#include "app/accessibility.h"
#include "convert/Movie.h"
#include "i18n/system_language.h"
#include "i18n/toolkit_language.h"
#include "settings/settings_file.h"

namespace {

/// The parent of the per-user application data folder.
wxString settings_folder() {
    wxStandardPaths& paths = wxStandardPaths::Get();
#ifdef __WXGTK__
    // The toolkit's data folder is ~/.vantreo in every layout; only its config folder, which is
    // already the parent, follows XDG_CONFIG_HOME.
    paths.SetFileLayout(wxStandardPaths::FileLayout_XDG);
    return paths.GetUserConfigDir();
#else
    return wxFileName(paths.GetUserDataDir()).GetPath(wxPATH_GET_VOLUME, wxPATH_NATIVE);
#endif
}

/// Vantreo.ini beside, not inside, the per-user application data folder.
wxFileName settings_file() {
    wxFileName file;
    file.Assign(settings_folder(), "Vantreo", "ini");
    return file;
}

/// Jobs that outlive their frame: the ends of their tools will still call them.
std::vector<std::unique_ptr<Movie>>& orphans() {
    static auto& jobs = *new std::vector<std::unique_ptr<Movie>>;
    return jobs;
}

}  // namespace

Vantreo::Vantreo(const wxString& title, const wxPoint& pos, const wxSize& size, long style)
    : wxFrame(nullptr, wxID_ANY, title, pos, size, style), reservedFlag(false), dialogParent(this) {
    const wxFileName file = settings_file();
    if (!file.DirExists())
        file.Mkdir(wxS_IRUSR | wxS_IWUSR | wxS_IXUSR, wxPATH_MKDIR_FULL);  // a new home may lack it
    config = open_settings(file.GetFullPath()).release();

    Translate("tointialize", 1);  // no such key: called to fill the two language lists

    defaultLanguage = default_language(languages, languagesEnglish, system_language_name());
    currentLanguage = "";
    for (const wxString& language : languages) {
        if (config_read("Language") == language)
            currentLanguage = language;
    }
    set_toolkit_language(languages, languagesEnglish, currentLanguage);

    Bind(wxEVT_CLOSE_WINDOW, &Vantreo::OnClose, this);
}

Vantreo::~Vantreo() {
    if (notebook != nullptr)
        stop_announcing_pages(*notebook);
    for (auto& job : jobs) {
        job->Detach();
        if (!job->Ended())
            orphans().push_back(std::move(job));
    }
}

void Vantreo::OnClose(wxCloseEvent& event) {
    const bool running =
        !checkingVersion && buttonConvert->GetLabel() == Translate("buttonConvert_cancel", 0);
    if (!running || Cancel())
        event.Skip();
}
