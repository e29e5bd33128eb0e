#include "web/site.h"

#include <wx/utils.h>

#include "base/build_facts.h"

wxString site_base() {
    wxString base;
    if (!wxGetEnv("VANTREO_SITE", &base) || base.empty())
        base = kBuildSite;
    if (!base.EndsWith("/"))
        base += "/";
    return base;
}

wxString platform_word() {
#if defined(__APPLE__)
    return "MacOSX";
#else
    return "Linux";
#endif
}
