#include "stop_mark.h"

#include <fcntl.h>
#include <unistd.h>

#include "session_folder.h"

namespace stop_mark {

namespace {

std::optional<std::string> mark_of(pid_t process) {
    const auto folder = session_folder();
    return folder ? std::optional(*folder + "/cancel-" + std::to_string(process)) : std::nullopt;
}

}  // namespace

void leave() {
    const auto path = mark_of(::getpid());
    const int mark =
        path ? ::open(path->c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600) : -1;
    if (mark >= 0) {
        ::close(mark);
    }
}

void remove() {
    if (const auto mark = mark_of(::getpid())) {
        ::unlink(mark->c_str());
    }
}

bool is_left_by(pid_t process) {
    const auto mark = mark_of(process);
    return mark && ::access(mark->c_str(), F_OK) == 0;
}

}  // namespace stop_mark
