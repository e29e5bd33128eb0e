#include "web/browser.h"

#include <wx/log.h>
#include <wx/utils.h>

#include "i18n/toolkit_language.h"

namespace {

/// Without the toolkit's own messages, which are about its calls and error numbers.
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
