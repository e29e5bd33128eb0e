#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/result.h"
#include "core/unique_fd.h"
#include "process/pipe_feed.h"

namespace bundle {

/// A movie in FLV, Matroska or ASF whose clock restarts or jumps: of joined files, or of recordings
/// in which the sender has restarted. ffmpeg drops what comes after a step back, and fills one
/// forward with silence; of joined ASF files it reads the first one only. Also a transport stream
/// in which the numbers (PIDs) of the streams change: ffmpeg keeps the last frame before the change
/// to the end.
struct JumpingClock {
    bool has_audio = true;  ///< otherwise a step forward may be one picture that is shown for long

    /// How long the movie of ffprobe's `format` is without the jumps, in seconds; empty when there
    /// are none, and for any other format; for a transport stream see `length_of_stream`.
    std::optional<double> length(const std::string& path, const std::string& format) const;

    /// What ffmpeg needs before "-i" to read a movie of ffprobe's `format` from the pipe.
    static std::vector<std::string> pipe_options(const std::string& format);

    /// The movie without the jumps, to be read from a pipe. `file` has to stay open, and ffmpeg has
    /// to inherit it.
    Result<PipeFeed> start_feed(const UniqueFd& file) const;
};

}  // namespace bundle
