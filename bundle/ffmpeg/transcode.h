#pragma once

#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "ffmpeg/request.h"

namespace bundle {

/// Writes the report on a movie to the error stream. Nothing else is written there, except the
/// reason if the report lacks what the program needs to accept the movie.
MaybeFailure report_movie(const std::string& path, const StopSignals& stop);

/// Converts a movie, with progress lines in the old form on the error stream.
///
/// Blocks. The output appears only once it is complete; after a failure or a stop an older output
/// is unchanged. Refuses an output that is the movie under another name. A failure leaves a note
/// beside the output, and so do the `shortcomings` of an MP4 file that was made. A stop does too,
/// unless the program itself has stopped this or has ended.
MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop);

}  // namespace bundle
