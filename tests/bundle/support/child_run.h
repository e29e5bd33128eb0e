#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/temporary_folder.h"

/// How long a test waits for anything before it counts as a failure.
inline constexpr std::chrono::seconds kDeadline{20};

/// Polls until the condition holds; false when the deadline has passed.
bool eventually(const std::function<bool()>& condition);

/// True while the process exists and is no zombie.
bool is_running(pid_t id);

/// A program started by a test, its two output streams kept in files. The destructor kills it.
class ChildRun {
  public:
    using Variables = std::vector<std::pair<std::string, std::string>>;

    /// Starts the program `words[0]`, an absolute path or a name on PATH. `prepare` is called in
    /// the new process right before the program takes its place.
    explicit ChildRun(const std::vector<std::string>& words, const Variables& variables = {},
                      const std::function<void()>& prepare = {});
    ChildRun(const ChildRun&) = delete;
    ChildRun& operator=(const ChildRun&) = delete;
    ~ChildRun();

    pid_t id() const { return id_; }
    void send(int signal) const;

    /// Waits for the end: the exit status, 128 plus the signal that killed it, -1 at the deadline.
    int wait();

    std::string output() const { return content_of(streams_ / "output"); }
    std::string errors() const { return content_of(streams_ / "errors"); }

  private:
    TemporaryFolder streams_;
    pid_t id_ = -1;
    bool ended_ = false;
    int status_ = -1;  ///< as `wait` returns it
};
