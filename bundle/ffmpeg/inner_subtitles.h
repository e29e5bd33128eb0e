#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"
#include "core/unique_fd.h"
#include "movie/subtitle_choice.h"
#include "process/progress.h"
#include "process/run_ffmpeg.h"
#include "subtitles/timed_text.h"

namespace bundle {

/// The text subtitles inside a movie on their way into the MP4 file. The ffmpeg that encodes the
/// picture writes each of them as a script of its own too, which costs no second reading of the
/// movie and gives them the same corrections of time.
class InnerSubtitles {
  public:
    /// Makes ready for these streams, but for teletext that the system's ffmpeg has no decoder for.
    /// Says on the error stream what can't be done about the movie `path`, which starts at `start`
    /// seconds.
    InnerSubtitles(std::vector<TextStream> streams, std::string path, double start,
                   const StopSignals& stop);

    bool empty() const { return streams_.empty(); }

    /// Adds to the work of encoding the movie, whose arguments begin with its only input and end
    /// with its only output, what makes ffmpeg write the scripts.
    void extend(FfmpegWork& work) const;

    /// Adds to the MP4 file what ffmpeg has written, and looks whether it is whole; `duration` is
    /// that of its picture and sound in seconds, and cues end there. A stream without any cue gives
    /// no track. A file that can't take the tracks stays as it was, which the error stream says; a
    /// failure means that it is damaged.
    MaybeFailure add_to(const std::string& path, double duration) const;

  private:
    std::optional<TextTrack> track(std::size_t at, double duration) const;
    std::vector<std::string> stream_arguments() const;
    std::vector<std::string> second_input() const;
    std::vector<std::string> output_arguments() const;

    std::vector<TextStream> streams_;
    std::string path_;
    std::optional<double> second_offset_;  ///< seconds; empty: there is one input for all
    std::vector<UniqueFd> scripts_;
};

/// The track of a stream whose script is `script`, within `duration` seconds; without cues when
/// there are none.
TextTrack track_of(const TextStream& stream, std::string_view script, double duration);

/// The progress with the time that its frames take at the rate, where that is known. The time that
/// ffmpeg reports follows the subtitles, which may be far ahead or behind.
Progress timed_by_frames(Progress progress, double frames_per_second);

}  // namespace bundle
