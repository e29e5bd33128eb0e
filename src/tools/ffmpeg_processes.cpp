#include "tools/ffmpeg_processes.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string_view>

#ifdef __APPLE__

#include <libproc.h>
#include <sys/proc.h>

#include <cstddef>
#include <cstring>

#else

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#endif

namespace {

constexpr std::string_view kName = "ffmpeg";

}  // namespace

#ifdef __APPLE__

std::vector<long> running_ffmpegs() {
    const int count = ::proc_listallpids(nullptr, 0);
    if (count <= 0)
        return {};
    // Room for those that start between the two calls.
    std::vector<pid_t> all(static_cast<std::size_t>(count) + 64);
    const int filled = ::proc_listallpids(all.data(), static_cast<int>(all.size() * sizeof(pid_t)));
    all.resize(filled > 0 ? static_cast<std::size_t>(filled) : 0);
    std::vector<long> running;
    for (const pid_t pid : all) {
        proc_bsdinfo info{};
        if (::proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, sizeof info) != sizeof info)
            continue;
        const std::string_view name(info.pbi_comm, ::strnlen(info.pbi_comm, MAXCOMLEN));
        if (name == kName && info.pbi_uid == ::geteuid() && info.pbi_status != SZOMB)
            running.push_back(pid);
    }
    return running;
}

#else

namespace {

namespace fs = std::filesystem;

/// Whether the text of a file /proc/PID/stat, "PID (NAME) STATE ...", shows a running ffmpeg.
bool shows_running_ffmpeg(std::string_view stat) {
    const std::size_t open = stat.find('(');
    const std::size_t close = stat.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos ||
        close + 2 >= stat.size())
        return false;
    const char state = stat[close + 2];
    return stat.substr(open + 1, close - open - 1) == kName && state != 'Z' && state != 'X';
}

bool is_own(const fs::path& process) {
    struct stat facts {};
    return ::stat(process.c_str(), &facts) == 0 && facts.st_uid == ::geteuid();
}

}  // namespace

std::vector<long> running_ffmpegs() {
    std::vector<long> running;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        long pid = 0;
        const auto [end, fault] = std::from_chars(name.data(), name.data() + name.size(), pid);
        if (fault != std::errc() || end != name.data() + name.size())
            continue;
        std::ifstream file(entry->path() / "stat");
        const std::string stat{std::istreambuf_iterator<char>(file), {}};
        if (shows_running_ffmpeg(stat) && is_own(entry->path()))
            running.push_back(pid);
    }
    return running;
}

#endif

bool child_has_ended(long pid) {
    siginfo_t info{};
    const int status = ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT);
    return status != 0 || info.si_pid != 0;
}
