#pragma once

#include <sys/types.h>

#include <optional>

#include "core/unique_fd.h"
#include "process/program_alias.h"
#include "process/run.h"

namespace bundle {

struct Pipe {
    UniqueFd reader;
    UniqueFd writer;
};

/// A pipe whose ends no started program inherits.
Result<Pipe> open_pipe();

/// In a process made by a fork: it ends by SIGTERM as any other does, and is killed when the
/// process that made it ends (Linux only). Async-signal-safe.
void end_with_maker();

/// Kills a child of this process and waits for its end, but no longer than a second or two: what
/// hangs on a dead drive may not be able to end.
void kill_child(pid_t id);

/// A started program: its process id and the reading ends of its two output streams, which never
/// block. The destructor kills it, as `kill_child` does, when it still runs.
class Child {
  public:
    /// Returns once the program itself runs, or tells why it can't.
    static Result<Child> start(const Command& command);

    Child(Child&& other) noexcept;
    Child& operator=(Child&&) = delete;
    ~Child();

    pid_t id() const { return id_; }
    int output() const { return output_.get(); }
    int errors() const { return errors_.get(); }

    /// The exit status, 128 plus the signal for a killed program; empty while it runs. Once it has
    /// been told, it is not told again.
    std::optional<int> ended();

  private:
    Child(pid_t id, UniqueFd output, UniqueFd errors, ProgramAlias alias);

    pid_t id_;
    UniqueFd output_;
    UniqueFd errors_;
    ProgramAlias alias_;
};

}  // namespace bundle
