#pragma once

#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "ffmpeg/request.h"

namespace bundle {

/// Writes the report on a movie to the error stream. Nothing else is written there, whether it
/// succeeds or not, but for the reason why the program will not take a movie that says too little.
MaybeFailure report_movie(const std::string& path, const StopSignals& stop);

/// Converts a movie, with progress lines in the old form on the error stream.
///
/// Blocks to the end of the work. The output appears only when it is whole; after a failure or a
/// stop an older output is as it was. Refuses an output that is the input by another name. A
/// failure leaves a failure note, and so does a movie that is shorter than its source promised, has
/// lost its sound, or stands still where a third of the source cannot be read. A stop does too,
/// unless the program itself has stopped this or has ended.
MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop);

/// Leaves a failure note beside `output` about a command line that was not understood.
void tell_of_refusal(const std::string& output, const Failure& failure);

}  // namespace bundle
