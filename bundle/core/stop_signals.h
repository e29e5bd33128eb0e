#pragma once

#include <initializer_list>

#include "core/result.h"

namespace bundle {

/// Handles the process's signals, so that a stop takes effect where the process can clean up.
///
/// The `stopping` signals are remembered; those in `ignored` and SIGPIPE do nothing. Signals that
/// the parent process had blocked or ignored are enabled again, and children can be waited for
/// whatever SIGCHLD disposition was inherited. Create one object, in main, before any file is
/// opened. The state is static, for the signal handlers; the parameter `const StopSignals&` marks
/// what blocks, and ends early with `failure()` after a stop.
class StopSignals {
  public:
    explicit StopSignals(std::initializer_list<int> stopping,
                         std::initializer_list<int> ignored = {});

    /// The first stopping signal that was received, 0 for none.
    int received() const;

    /// What a stopped step returns: its status is 128 plus the signal.
    Failure failure() const;

    /// Becomes readable when a stopping signal is received or a child ends.
    int wake_descriptor() const;

    /// Makes the wake descriptor unreadable until the next signal.
    void drain() const;
};

/// Ends this process by SIGTERM when its parent ends, or if it has ended already. `parent` is the
/// parent's process id at the start. Linux only; elsewhere (Mac OS X was not tried) the tool goes
/// on.
void end_with_parent(int parent);

/// The process id given to `end_with_parent`, else that of the parent at the first call.
int first_parent();

}  // namespace bundle
