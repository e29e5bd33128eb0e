#include "process/own_end.h"

#include <unistd.h>

#include <chrono>
#include <thread>

#include "core/stop_signals.h"
#include "protocol/stop_mark.h"

namespace bundle {

namespace {

// Far longer than a window needs to end after the same signal, as at a logout.
constexpr std::chrono::milliseconds kMoment{250};
constexpr std::chrono::milliseconds kRound{5};

}  // namespace

bool is_being_canceled() {
    return ::getppid() != first_parent() || stop_mark::is_left_by(first_parent());
}

bool is_ended_by_program() {
    const auto end = std::chrono::steady_clock::now() + kMoment;
    while (!is_being_canceled()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(kRound);
    }
    return true;
}

}  // namespace bundle
