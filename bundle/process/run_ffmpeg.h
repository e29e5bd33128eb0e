#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"
#include "process/progress.h"

namespace bundle {

/// A run of the system's ffmpeg.
struct FfmpegWork {
    std::vector<std::string> arguments;  ///< inputs, options and the output, which may exist
    std::string alias = {};              ///< name in the system's process list; empty: its own
    int input = -1;                      ///< descriptor of its standard input, not owned; -1: none
    std::string subject = {};            ///< the file that messages name; empty: none
    std::vector<int> inherited = {};     ///< descriptors that it inherits, not owned
};

/// Runs the system's ffmpeg to its end.
///
/// Blocks. `show` is called with the latest progress at each of ffmpeg's reports and at least four
/// times a second. Returns ffmpeg's last messages, which are a failure's details; all of them would
/// be endless for a damaged movie.
Result<std::string> run_ffmpeg(const FfmpegWork& work,
                               const std::function<void(const Progress&)>& show,
                               const StopSignals& stop);

/// Prints ffmpeg's messages, if any, to the error stream. `subject` is the file that they are
/// about; may be empty.
void print_messages(const std::string& messages, const std::string& subject = {});

}  // namespace bundle
