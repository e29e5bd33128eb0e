#include "output/notice.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "process/child.h"
#include "process/system_tools.h"

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace bundle {

namespace {

constexpr const char* kHelper = "notify";

/// True where there is no bus, or where a test wants none.
bool is_no_address(std::string_view address) {
    return address.empty() || address.starts_with("disabled:");
}

bool has_session_bus() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS")) {
        return !is_no_address(address);
    }
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return runtime != nullptr && *runtime == '/' &&
           ::access((std::string(runtime) + "/bus").c_str(), W_OK) == 0;
}

/// Whoever reads this tool's output to its end must not wait for the helper.
void close_everything() {
    const int nothing = ::open("/dev/null", O_RDWR);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard) {
        ::dup2(nothing, standard);
    }
    const long limit = ::sysconf(_SC_OPEN_MAX);
    for (int descriptor = STDERR_FILENO + 1; descriptor < (limit < 1024 ? limit : 1024);
         ++descriptor) {
        ::close(descriptor);
    }
}

/// In the forked process: a grandchild becomes the helper, so that this tool need not wait for it.
[[noreturn]] void become(char* const* words) {
#ifdef __linux__
    ::prctl(PR_SET_NAME, kHelper);
#endif
    ::setsid();
    if (::fork() == 0) {
        close_everything();
        restore_signals();
        ::execv(words[0], words);
    }
    ::_exit(0);
}

}  // namespace

void show_notice(const Notice& notice, Step step) {
    const std::string helper = beside_this_tool(kHelper);
    if (!has_session_bus() || ::access(helper.c_str(), X_OK) != 0) {
        return;
    }
    std::vector<std::string> words{helper,      notice.output,   std::to_string(place_of(step)),
                                   notice.name, notice.sentence, notice.note};
    const auto pointers = argument_pointers(words);
    const pid_t id = ::fork();
    if (id == 0) {
        become(pointers.data());
    }
    if (id > 0) {
        ::waitpid(id, nullptr, 0);
    }
}

}  // namespace bundle
