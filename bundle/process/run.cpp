#include "process/run.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "core/bytes_read.h"
#include "process/child.h"
#include "process/stall_watch.h"

namespace bundle {

namespace {

// Together more than a pipe holds, but limited, in case the program never pauses.
constexpr std::size_t kPieceSize = 16384;
constexpr int kPiecesAtOnce = 8;

/// Reads what a stream of the child contains, without blocking.
class Stream {
  public:
    Stream(int descriptor, const std::function<void(std::string_view)>& receiver)
        : descriptor_(descriptor), receiver_(receiver) {}

    /// -1, which poll ignores, once the stream has ended.
    int descriptor() const { return descriptor_; }

    /// True when there was something.
    bool read_available() {
        std::array<char, kPieceSize> piece{};
        bool came = false;
        for (int pieces = 0; descriptor_ >= 0 && pieces < kPiecesAtOnce; ++pieces) {
            const ssize_t count = ::read(descriptor_, piece.data(), piece.size());
            if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
                return came;
            }
            if (count <= 0) {
                descriptor_ = -1;
                return came;
            }
            came = true;
            if (receiver_) {
                receiver_({piece.data(), static_cast<std::size_t>(count)});
            }
        }
        return came;
    }

  private:
    int descriptor_;
    const std::function<void(std::string_view)>& receiver_;
};

void wait_for_news(const Stream& output, const Stream& errors, std::chrono::milliseconds longest,
                   const StopSignals& stop) {
    std::array<pollfd, 3> sources{{{stop.wake_descriptor(), POLLIN, 0},
                                   {output.descriptor(), POLLIN, 0},
                                   {errors.descriptor(), POLLIN, 0}}};
    ::poll(sources.data(), sources.size(), static_cast<int>(longest.count()));
    stop.drain();
}

std::string name_of(const Command& command) {
    return command.program.substr(command.program.rfind('/') + 1);
}

/// Checks the limits of a running program.
class Limits {
  public:
    Limits(const Command& command, pid_t id)
        : command_(command), id_(id), stall_(id, kLongestStall) {}

    /// The longest time between two checks.
    std::chrono::milliseconds longest_wait() const {
        return command_.most_read > 0 ? kGlance : kTick;
    }

    void heard() { stall_.heard(); }

    /// A cheap check, made more often than `exceeded`.
    MaybeFailure has_read_too_much() const {
        if (command_.most_read == 0 || bytes_read(id_) <= command_.most_read) {
            return std::nullopt;
        }
        return Failure{name_of(command_) + " has read more than it may", kStatusReadTooMuch};
    }

    MaybeFailure exceeded() {
        if (stall_.stalled()) {
            return failure_by(Cause::kStalled, name_of(command_) + " stopped responding for " +
                                                   std::to_string(kLongestStall.count() / 1000) +
                                                   " seconds");
        }
        if (command_.longest_run.count() > 0 && Clock::now() - start_ > command_.longest_run) {
            return failure_by(Cause::kStalled,
                              name_of(command_) + " did not finish within " +
                                  std::to_string(command_.longest_run.count() / 1000) + " seconds");
        }
        return std::nullopt;
    }

  private:
    using Clock = StallWatch::Clock;

    static constexpr std::chrono::milliseconds kGlance{20};

    const Command& command_;
    pid_t id_;
    StallWatch stall_;
    Clock::time_point start_ = Clock::now();
};

}  // namespace

Result<int> run(const Command& command, const Listener& listener, const StopSignals& stop) {
    auto child = Child::start(command);
    if (!child) {
        return child.failure();
    }
    Stream output(child->output(), listener.on_output);
    Stream errors(child->errors(), listener.on_error);
    Limits limits(command, child->id());
    auto last_tick = std::chrono::steady_clock::now();
    while (stop.received() == 0) {
        // Before reading: the output of a program that has ended is then complete.
        const auto status = child->ended();
        const bool printed = output.read_available();
        if (errors.read_available() || printed) {
            limits.heard();
        }
        if (status) {
            return *status;
        }
        if (std::chrono::steady_clock::now() - last_tick >= kTick) {
            last_tick = std::chrono::steady_clock::now();
            if (listener.on_tick) {
                listener.on_tick();
            }
            if (auto failure = limits.exceeded()) {
                return *failure;
            }
        }
        if (auto failure = limits.has_read_too_much()) {
            return *failure;
        }
        wait_for_news(output, errors, limits.longest_wait(), stop);
    }
    return stop.failure();
}

}  // namespace bundle
