#pragma once

#include <sys/types.h>

#include <chrono>

namespace bundle {

/// Notices that a program has come to a standstill, as it does on a file of a dead network drive:
/// for a time nothing was heard of it and it used no processor time, though it was not held by a
/// signal. Where the system does not tell of the latter (only Linux does), silence alone counts.
class StallWatch {
  public:
    using Clock = std::chrono::steady_clock;

    StallWatch(pid_t id, std::chrono::milliseconds limit);

    /// The program has printed something.
    void heard() { last_life_ = Clock::now(); }

    /// True once the standstill has lasted longer than the limit.
    bool stalled();

  private:
    pid_t id_;
    std::chrono::milliseconds limit_;
    Clock::time_point last_life_ = Clock::now();
    long long ticks_ = -1;  ///< of processor time used; -1: not known
};

}  // namespace bundle
