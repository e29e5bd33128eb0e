#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"
#include "process/progress.h"

namespace bundle {

/// A piece of work for the system's ffmpeg.
struct FfmpegWork {
    std::vector<std::string> arguments;  ///< inputs, options and the output, which may exist
    std::string alias = {};              ///< name in the system's process list; empty: its own
    int input = -1;                      ///< descriptor of its standard input, not owned; -1: empty
    std::string subject = {};            ///< the file that messages name; empty: none
    std::vector<int> inherited = {};     ///< more descriptors that it gets, not owned
};

/// Has the system's ffmpeg do the work, and blocks until it has.
///
/// `show` is called with the latest progress at each of ffmpeg's reports, and between them too, at
/// least four times a second. ffmpeg's last messages are returned, or go into the failure when it
/// fails; all of them would be endless for a damaged movie.
Result<std::string> run_ffmpeg(const FfmpegWork& work,
                               const std::function<void(const Progress&)>& show,
                               const StopSignals& stop);

/// Tells on the error stream what ffmpeg had to say on the file `subject`, which may be none, when
/// it said something.
void print_messages(const std::string& messages, const std::string& subject = {});

}  // namespace bundle
