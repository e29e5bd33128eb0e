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
    std::string program;                 ///< absolute path
    std::vector<std::string> arguments;  ///< after the program's name
    std::string alias = {};              ///< name in the system's process list; empty: its own
    int input = -1;                      ///< descriptor of its standard input, not owned; -1: none
    std::chrono::milliseconds longest_run{0};  ///< then it is killed; 0: no limit
    std::vector<int> inherited = {};           ///< descriptors that it inherits, not owned
    std::int64_t most_read = 0;  ///< bytes; if it reads more, it is soon killed; 0: no limit
};

/// What `run` calls while the program runs, in the calling thread; any may be empty.
struct Listener {
    std::function<void(std::string_view)> on_output;  ///< a piece of its standard output
    std::function<void(std::string_view)> on_error;   ///< a piece of its error stream
    std::function<void()> on_tick;  ///< every `kTick`, unless one of these takes longer
};

inline constexpr std::chrono::milliseconds kTick{250};

/// The failure's status when a program has read more than `most_read`.
inline constexpr int kStatusReadTooMuch = 3;

/// How long a program may stand still before it is killed; see `StallWatch`.
inline constexpr std::chrono::milliseconds kLongestStall{8000};

/// Runs the program to its end and returns its exit status (128 plus the signal that killed it).
///
/// Blocks. Fails when the program can't be started, after a stop signal, and when the program
/// stands still or exceeds a limit; it has then been killed. It is also killed when this process
/// ends in any way (Linux only). All output has been passed on when `run` returns.
Result<int> run(const Command& command, const Listener& listener, const StopSignals& stop);

}  // namespace bundle
