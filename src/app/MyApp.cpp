#include "app/MyApp.h"

#include <wx/log.h>

#include "app/Vantreo.h"
#include "app/painting.h"
#include "app/window_icon.h"
#include "i18n/program_locale.h"
#ifdef __WXGTK__
#include "app/gtk_html_colours.h"
#include "app/gtk_look.h"
#include "app/gtk_place.h"
#include "app/gtk_stray_input.h"
#endif

bool MyApp::OnInit() {
    take_up_system_locale();
    // The toolkit's own complaints (an unwritable settings file, say) go to the console, not into
    // dialogs: the user only ever sees the program's translated messages.
    delete wxLog::SetActiveTarget(new wxLogStderr);
#ifdef __WXGTK__
    apply_gtk_look();
    apply_theme_to_html();
    ignore_stray_input();
#endif

    auto* frame =
        new Vantreo("Vantreo", wxDefaultPosition, wxSize(735, 330),
                    wxCAPTION | wxCLIP_CHILDREN | wxCLOSE_BOX | wxSYSTEM_MENU | wxMINIMIZE_BOX);
    frame->SetIcons(window_icon());
    frame->SetSize(770, 385);
    frame->Center(wxBOTH);
#ifdef __WXGTK__
    fit_theme_to_places(*frame);
    keep_size_and_place(*frame, wxSize(770, 385));
#endif
    frame->layout_checkVersion();
    frame->Show(true);
    SetTopWindow(frame);
    // The first drawing may still have a size that the window manager chose.
    paint_now(*frame, 2);
    frame->checkVersion();
    return true;
}
