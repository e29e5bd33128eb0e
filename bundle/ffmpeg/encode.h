#pragma once

#include <nlohmann/json_fwd.hpp>

#include "core/result.h"
#include "core/stop_signals.h"
#include "ffmpeg/request.h"
#include "ffmpeg/run_plan.h"
#include "movie/movie.h"
#include "output/private_file.h"

namespace bundle {

/// An MP4 file that was made.
struct EncodedMovie {
    Movie movie;  ///< with the streams that were taken
    EncodedFile file;
};

/// Encodes the movie, of which `probed` is ffprobe's JSON, into `output` and checks that, with
/// progress lines in the old form on the error stream.
///
/// Blocks. If ffmpeg fails or has messages, or no audio arrives, the audio streams are looked at;
/// if nothing of the chosen one can be decoded, the movie is encoded again with the next one, at
/// last without audio. If the movie has subtitles and ffmpeg fails, it is encoded again without
/// them. The progress never goes back: it stands still until the new run has caught up.
Result<EncodedMovie> encode_movie(const TranscodeRequest& request, const nlohmann::json& probed,
                                  const Movie& movie, PrivateFile& output, const StopSignals& stop);

}  // namespace bundle
