#include "web/browser.h"

#include <wx/log.h>
#include <wx/utils.h>

#include "i18n/toolkit_language.h"

namespace {

/// The toolkit's own complaints name calls and error numbers of its own.
bool launch_silently(const wxString& address) {
    const wxLogNull silent;
    const UserEnvironment environment;
    return wxLaunchDefaultBrowser(address, 0);
}

}  // namespace

bool open_in_browser(const wxString& address) {
    const bool opened = launch_silently(address);
    if (!opened)
        wxLogWarning("No browser could be started for %s", address);
    return opened;
}
