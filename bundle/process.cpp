#include "process.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "child.h"

namespace bundle {

namespace {

// More than a pipe holds, so that one reading empties it, and yet an end to it under a flood.
constexpr std::size_t kPieceSize = 16384;
constexpr int kPiecesAtOnce = 8;

/// Reads what one stream of the child holds, without blocking.
class Stream {
  public:
    Stream(int descriptor, const std::function<void(std::string_view)>& receiver)
        : descriptor_(descriptor), receiver_(receiver) {}

    /// -1 once the stream has ended, which poll passes over.
    int descriptor() const { return descriptor_; }

    void read_available() {
        std::array<char, kPieceSize> piece{};
        for (int pieces = 0; descriptor_ >= 0 && pieces < kPiecesAtOnce; ++pieces) {
            const ssize_t count = ::read(descriptor_, piece.data(), piece.size());
            if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
                return;
            }
            if (count <= 0) {
                descriptor_ = -1;
                return;
            }
            if (receiver_) {
                receiver_({piece.data(), static_cast<std::size_t>(count)});
            }
        }
    }

  private:
    int descriptor_;
    const std::function<void(std::string_view)>& receiver_;
};

void wait_for_news(const Stream& output, const Stream& errors, const StopSignals& stop) {
    std::array<pollfd, 3> sources{{{stop.wake_descriptor(), POLLIN, 0},
                                   {output.descriptor(), POLLIN, 0},
                                   {errors.descriptor(), POLLIN, 0}}};
    ::poll(sources.data(), sources.size(), static_cast<int>(kTick.count()));
    stop.drain();
}

}  // namespace

Result<int> run(const Command& command, const Listener& listener, const StopSignals& stop) {
    auto child = Child::start(command);
    if (!child) {
        return child.failure();
    }
    Stream output(child->output(), listener.on_output);
    Stream errors(child->errors(), listener.on_error);
    auto last_tick = std::chrono::steady_clock::now();
    while (stop.received() == 0) {
        // Asked before the reading: what an ended program has printed is then complete.
        const auto status = child->ended();
        output.read_available();
        errors.read_available();
        if (status) {
            return *status;
        }
        if (listener.on_tick && std::chrono::steady_clock::now() - last_tick >= kTick) {
            last_tick = std::chrono::steady_clock::now();
            listener.on_tick();
        }
        wait_for_news(output, errors, stop);
    }
    return stop.failure();
}

}  // namespace bundle
