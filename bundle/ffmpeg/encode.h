#pragma once

#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "ffmpeg/picture_gaps.h"
#include "ffmpeg/request.h"
#include "movie/movie.h"
#include "output/private_file.h"

namespace bundle {

/// A movie that was made.
struct EncodedMovie {
    Movie movie;             ///< the one that it was made of
    double duration = 0;     ///< of what was made, in seconds; without what was damaged at its end
    std::string messages;    ///< what the system's ffmpeg had to say, usually nothing
    FrameCount frames = {};  ///< known where ffmpeg itself fills the gaps of an even picture
};

/// Encodes the source into `output` and looks whether that is whole, with progress lines in the old
/// form on the error stream.
///
/// Blocks. The sound is taken as the source tells of it. When the encoder says something or fails,
/// or when the MP4 file holds no sound, it is listened to, meanwhile or afterwards; when nothing of
/// it can be decoded, the encoder is ended and the work done anew with the next sound, in the end
/// without one. The progress then stands still until the new work has caught up.
Result<EncodedMovie> encode_movie(const TranscodeRequest& request, PrivateFile& output,
                                  const StopSignals& stop);

}  // namespace bundle
