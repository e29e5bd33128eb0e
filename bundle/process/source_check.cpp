#include "process/source_check.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>

#include "core/console.h"
#include "process/child.h"
#include "process/run.h"

namespace bundle {

namespace {

/// What the other process finds out, sent as one piece through a pipe.
struct Finding {
    int error = 0;  ///< an errno
    mode_t mode = 0;
    off_t size = 0;
};

/// Only async-signal-safe calls: it runs behind a fork.
Finding look_at(const char* path) {
    struct stat status {};
    if (::stat(path, &status) != 0) {
        return {errno};
    }
    Finding finding{0, status.st_mode, status.st_size};
    if (!S_ISREG(status.st_mode)) {
        return finding;
    }
    const int file = ::open(path, O_RDONLY | O_NONBLOCK);
    char byte = 0;
    if (file < 0 || ::read(file, &byte, 1) < 0) {
        finding.error = errno;
    }
    return finding;
}

/// Sends the finding and ends with this process, which may be killed while the drive hangs.
[[noreturn]] void look_and_tell(const char* path, int pipe) {
    end_with_maker();
    const Finding finding = look_at(path);
    [[maybe_unused]] const ssize_t written = ::write(pipe, &finding, sizeof finding);
    ::_exit(0);
}

/// Waits for the finding; empty when the time is over, a stop comes or the process fails.
std::optional<Finding> wait_for(int pipe, const StopSignals& stop) {
    const auto deadline = std::chrono::steady_clock::now() + kLongestStall;
    while (stop.received() == 0 && std::chrono::steady_clock::now() < deadline) {
        std::array<pollfd, 2> sources{{{stop.wake_descriptor(), POLLIN, 0}, {pipe, POLLIN, 0}}};
        ::poll(sources.data(), sources.size(), static_cast<int>(kTick.count()));
        if (sources[1].revents != 0) {
            Finding finding;
            const bool whole = ::read(pipe, &finding, sizeof finding) == sizeof finding;
            return whole ? std::optional(finding) : std::nullopt;
        }
        stop.drain();
    }
    return std::nullopt;
}

/// A process that hangs in the file system is left to the system: it ends when it can.
void dismiss(pid_t id, bool hangs) {
    ::kill(id, SIGKILL);
    ::waitpid(id, nullptr, hangs ? WNOHANG : 0);
}

MaybeFailure judge(const std::string& path, const Finding& finding) {
    if (finding.error != 0) {
        return failure_by(read_cause(finding.error),
                          "cannot read " + in_quotes(path) + ": " + std::strerror(finding.error));
    }
    if (S_ISDIR(finding.mode)) {
        return failure_by(Cause::kNoFile, in_quotes(path) + " is a folder");
    }
    if (!S_ISREG(finding.mode)) {
        return failure_by(Cause::kNoFile, in_quotes(path) + " is not an ordinary file");
    }
    if (finding.size == 0) {
        return failure_by(Cause::kMovieEmpty, in_quotes(path) + " is empty");
    }
    return std::nullopt;
}

}  // namespace

MaybeFailure check_source(const std::string& path, const StopSignals& stop) {
    auto pipe = open_pipe();
    if (!pipe) {
        return pipe.failure();
    }
    const pid_t id = ::fork();
    if (id < 0) {
        return Failure{std::string("cannot start a process: ") + std::strerror(errno)};
    }
    if (id == 0) {
        look_and_tell(path.c_str(), pipe->writer.get());
    }
    pipe->writer.reset();
    const auto finding = wait_for(pipe->reader.get(), stop);
    dismiss(id, !finding);
    if (stop.received() != 0) {
        return stop.failure();
    }
    if (!finding) {
        return failure_by(Cause::kDriveSilent,
                          in_quotes(path) + " cannot be reached: its drive does not answer");
    }
    return judge(path, *finding);
}

}  // namespace bundle
