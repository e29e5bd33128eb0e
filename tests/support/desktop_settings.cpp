#include "support/desktop_settings.h"

#include <glib.h>
#include <signal.h>
#include <sys/wait.h>

#include <string>

namespace {

const wxString kFile = "settings";

}  // namespace

DesktopSettings::DesktopSettings(const wxString& lines) {
    folder.write(kFile, lines + "\n");
    const std::string file = folder.file(kFile).utf8_string();
    const char* const command[] = {"xsettingsd", "-c", file.c_str(), nullptr};
    g_spawn_async(
        nullptr, const_cast<char**>(command), nullptr,
        GSpawnFlags(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_STDERR_TO_DEV_NULL),
        nullptr, nullptr, &process, nullptr);
}

DesktopSettings::~DesktopSettings() {
    if (process <= 0)
        return;
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
}

void DesktopSettings::change(const wxString& lines) {
    folder.write(kFile, lines + "\n");
    if (process > 0)
        kill(process, SIGHUP);
}
