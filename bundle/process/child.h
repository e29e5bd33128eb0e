#pragma once

#include <sys/types.h>

#include <optional>

#include "core/unique_fd.h"
#include "process/run.h"

namespace bundle {

struct Pipe {
    UniqueFd reader;
    UniqueFd writer;
};

/// A pipe that no started program inherits.
Result<Pipe> open_pipe();

/// To be called after a fork: SIGTERM ends the process, and it is killed when the process that
/// forked it ends (Linux only). Async-signal-safe.
void end_with_maker();

/// To be called after a fork, before an exec: gives handled signals and SIGPIPE their default
/// effect and unblocks all. Other ignored signals stay ignored. Async-signal-safe.
void restore_signals();

/// The words as execv takes them; valid as long as the words are.
std::vector<char*> argument_pointers(std::vector<std::string>& words);

/// Kills a child of this process and waits for its end, but at most two seconds: a process that
/// hangs on a dead drive may not be able to end.
void kill_child(pid_t id);

/// A started program: its process id and the reading ends of its two output streams, which do not
/// block. The destructor kills it if it still runs, as `kill_child` does.
///
/// It is forked here rather than by posix_spawn, which can't have it killed when this process ends.
class Child {
  public:
    /// Returns when the program itself runs, or why it can't.
    static Result<Child> start(const Command& command);

    Child(Child&& other) noexcept;
    Child& operator=(Child&&) = delete;
    ~Child();

    pid_t id() const { return id_; }
    int output() const { return output_.get(); }
    int errors() const { return errors_.get(); }

    /// The exit status, 128 plus the signal for a killed program; empty while it runs and after the
    /// status has been returned once.
    std::optional<int> ended();

  private:
    Child(pid_t id, UniqueFd output, UniqueFd errors);

    pid_t id_;
    UniqueFd output_;
    UniqueFd errors_;
};

}  // namespace bundle
