#include "stop_mark.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace stop_mark {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? value : "";
}

std::string folder() {
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

std::string mark_of(pid_t process) {
    return folder() + "/cancel-" + std::to_string(process);
}

}  // namespace

void leave() {
    ::mkdir(folder().c_str(), S_IRWXU);
    if (is_own(folder())) {
        const int mark = ::open(mark_of(::getpid()).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        ::close(mark);
    }
}

void remove() {
    if (is_own(folder())) {
        ::unlink(mark_of(::getpid()).c_str());
    }
}

bool is_left_by(pid_t process) {
    return is_own(folder()) && ::access(mark_of(process).c_str(), F_OK) == 0;
}

}  // namespace stop_mark
