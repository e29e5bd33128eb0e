#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"
#include "core/unique_fd.h"
#include "movie/subtitle_choice.h"
#include "process/progress.h"
#include "subtitles/timed_text.h"

namespace bundle {

/// The text subtitles inside a movie on their way into the MP4 file. The ffmpeg that encodes the
/// movie also writes each of them as a script. That takes no second pass over the movie, and times
/// are corrected the same way as those of the video.
class InnerSubtitles {
  public:
    /// Makes an empty script for each stream of the movie `path`. Without room for the scripts the
    /// remaining streams are left out, which the error stream says.
    InnerSubtitles(std::vector<TextStream> streams, std::string path);

    /// The descriptors that ffmpeg writes the scripts to.
    std::vector<int> scripts() const;

    /// Adds the written scripts to the MP4 file and checks it. `duration` is that of the MP4 file
    /// in seconds; cues end there. A stream without cues gives no track. A file that cannot take
    /// the tracks stays as it was, which the error stream says; a failure means that it is damaged.
    MaybeFailure add_to(const std::string& path, double duration) const;

  private:
    std::optional<TextTrack> track(std::size_t at, double duration) const;

    std::vector<TextStream> streams_;
    std::string path_;
    std::vector<UniqueFd> scripts_;
};

/// The track of a stream whose script is `script`, up to `duration` seconds; it may have no cues.
TextTrack track_of(const TextStream& stream, std::string_view script, double duration);

/// The progress with its time computed from its frames, if the rate is known (above zero). The time
/// that ffmpeg reports follows the subtitles, which may be far ahead or behind.
Progress timed_by_frames(Progress progress, double frames_per_second);

}  // namespace bundle
