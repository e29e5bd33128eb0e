#pragma once

#include <sys/types.h>

#include <chrono>

namespace bundle {

/// Notices that a program has stopped working, as it does on a file of a dead network drive: it has
/// printed nothing and used no processor time for a while, and is not suspended by a signal.
/// Silence alone is not enough, because ffprobe prints nothing while it reads through gigabytes of
/// zeros; it counts only where the system does not report the processor time (only Linux does).
class StallWatch {
  public:
    using Clock = std::chrono::steady_clock;

    StallWatch(pid_t id, std::chrono::milliseconds limit);

    /// The program has printed something.
    void heard() { last_life_ = Clock::now(); }

    /// True once the program has stood still for longer than the limit.
    bool stalled();

  private:
    pid_t id_;
    std::chrono::milliseconds limit_;
    Clock::time_point last_life_ = Clock::now();
    long long ticks_ = -1;  ///< of processor time used; -1: not known
};

}  // namespace bundle
