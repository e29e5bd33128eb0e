#pragma once

#include <optional>
#include <string>

#include "core/result.h"
#include "ffmpeg/encode.h"
#include "ffmpeg/request.h"
#include "output/note_text.h"

namespace bundle {

/// What the MP4 file lacks of the movie; usually nothing: it is shorter than the movie should be,
/// has no audio because none could be decoded, or its picture stands still where the movie is
/// damaged.
std::optional<FailureNote> shortcomings(const TranscodeRequest& request, const EncodedMovie& made);

/// Leaves a note on a conversion that was made, or removes an earlier one.
void note_success(const TranscodeRequest& request, const std::optional<FailureNote>& shortcomings);

/// Leaves a note on a conversion that failed. `was_there`: there was an older output.
void note_failure(const TranscodeRequest& request, const Failure& failure, bool was_there);

/// Leaves a note beside `output` on a command line that was not understood.
void note_refusal(const std::string& output, const Failure& failure);

}  // namespace bundle
