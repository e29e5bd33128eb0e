#include "session_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? value : "";
}

/// The best place first. After su or sudo the session may be somebody else's.
std::vector<std::string> paths() {
    const std::string runtime = variable("XDG_RUNTIME_DIR");
    const std::string temporary = variable("TMPDIR");
    std::vector<std::string> found;
    if (!runtime.empty()) {
        found.push_back(runtime + "/vantreo");
    }
    found.push_back((temporary.empty() ? "/tmp" : temporary) + "/vantreo-" +
                    std::to_string(::geteuid()));
    return found;
}

/// In a folder that all may write to, somebody else may have made one of that name.
bool is_own(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid();
}

}  // namespace

std::optional<std::string> session_folder() {
    for (const std::string& folder : paths()) {
        ::mkdir(folder.c_str(), S_IRWXU);
        if (is_own(folder)) {
            return folder;
        }
    }
    return std::nullopt;
}
