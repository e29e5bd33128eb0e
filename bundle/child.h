#pragma once

#include <sys/types.h>

#include <optional>

#include "process.h"
#include "unique_fd.h"

namespace bundle {

/// A started program: its process id and the reading ends of its two output streams, which never
/// block. The destructor kills it when it still runs, and waits for that; not longer than a second
/// or two, because a program that hangs on a dead drive may not be able to end.
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
    Child(pid_t id, UniqueFd output, UniqueFd errors);

    pid_t id_;
    UniqueFd output_;
    UniqueFd errors_;
};

}  // namespace bundle
