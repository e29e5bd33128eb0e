#pragma once

#include <initializer_list>

#include "core/result.h"

namespace bundle {

/// Takes over the process's signals so that a stop is noticed at a place that can clean up.
///
/// Each of the `stopping` signals is remembered; the ones in `ignored` and SIGPIPE do nothing.
/// Signals that were blocked or ignored by whoever started the process are set free, and a child's
/// end can be waited for whatever SIGCHLD disposition was inherited. Signal dispositions belong to
/// the process: make one object, in main, before anything that opens files.
class StopSignals {
  public:
    explicit StopSignals(std::initializer_list<int> stopping,
                         std::initializer_list<int> ignored = {});

    /// The first stopping signal that came, 0 for none.
    int received() const;

    /// What a step returns that was stopped: its status is 128 plus the signal.
    Failure failure() const;

    /// Becomes readable when a stopping signal has come or a child has ended.
    int wake_descriptor() const;

    /// Makes the wake descriptor unreadable until the next signal.
    void drain() const;
};

/// Ends this process by SIGTERM as soon as its parent ends, also when the parent is already gone
/// since `parent`, the process id of the parent at start, was read. Linux only; elsewhere (Mac OS X
/// was not tried) nothing happens and the tool runs to its end.
void end_with_parent(int parent);

/// The process id that `end_with_parent` was given; without it that of the parent at the first
/// call.
int first_parent();

}  // namespace bundle
