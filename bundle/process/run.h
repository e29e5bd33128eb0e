#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// A program to run, without a shell in between.
struct Command {
    std::string program;                 ///< absolute path of the executable
    std::vector<std::string> arguments;  ///< what follows the program's name
    std::string alias = {};              ///< name in the system's process list; empty: its own
    int input = -1;                      ///< descriptor of its standard input, not owned; -1: empty
    std::chrono::milliseconds longest_run{0};  ///< it is killed then; 0: no limit
    std::vector<int> inherited = {};           ///< descriptors that it gets as they are, not owned
    std::int64_t most_read = 0;  ///< bytes; it is killed soon after it has read more; 0: no limit
};

/// What `run` calls while the program runs, all from the calling thread; any may be empty.
struct Listener {
    std::function<void(std::string_view)> on_output;  ///< a piece of its standard output
    std::function<void(std::string_view)> on_error;   ///< a piece of its error stream
    std::function<void()> on_tick;           ///< every `kTick`, if none of these takes longer
    std::function<bool()> should_stop = {};  ///< true ends the program
};

inline constexpr std::chrono::milliseconds kTick{250};

/// The status of the failure of a program that has read more than it may.
inline constexpr int kStatusReadTooMuch = 3;

/// How long a program may stand still before it is given up; see `StallWatch`.
inline constexpr std::chrono::milliseconds kLongestStall{8000};

/// Runs the program to its end and returns its exit status (128 plus the signal that killed it).
///
/// Blocks. Fails when it can't be started, when a stop signal comes, when the listener has enough,
/// when the program comes to a standstill and when it exceeds its time; the program has then been
/// killed and is gone. It is also killed when this process dies in any way (Linux only). Every
/// piece that it printed has been handed over before `run` returns.
Result<int> run(const Command& command, const Listener& listener, const StopSignals& stop);

}  // namespace bundle
