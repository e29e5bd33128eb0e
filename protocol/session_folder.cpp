#include "session_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? value : "";
}

std::string path() {
    const std::string runtime = variable("XDG_RUNTIME_DIR");
    if (!runtime.empty()) {
        return runtime + "/vantreo";
    }
    const std::string temporary = variable("TMPDIR");
    return (temporary.empty() ? "/tmp" : temporary) + "/vantreo-" + std::to_string(::geteuid());
}

/// In a folder that all may write to, somebody else may have made one of that name.
bool is_own(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid();
}

}  // namespace

std::optional<std::string> session_folder() {
    std::string folder = path();
    ::mkdir(folder.c_str(), S_IRWXU);
    return is_own(folder) ? std::optional(std::move(folder)) : std::nullopt;
}
