#include "process/source_check.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include "core/console.h"
#include "process/pipe_feed.h"
#include "process/run.h"

namespace bundle {

namespace {

/// What the other process finds out and sends through the pipe.
struct Finding {
    int error = 0;  ///< an errno
    mode_t mode = 0;
    off_t size = 0;
};

/// Runs after a fork: only async-signal-safe calls.
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

/// Empty when no finding comes in time, a stop comes or the process fails.
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
    const auto looking = PipeFeed::start([&path](const ByteSink& sink) {
        const Finding finding = look_at(path.c_str());
        sink({reinterpret_cast<const char*>(&finding), sizeof finding});
    });
    if (!looking) {
        return looking.failure();
    }
    const auto finding = wait_for(looking->reader(), stop);
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
