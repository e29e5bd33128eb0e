#pragma once

#include <string>
#include <vector>

#include "core/result.h"
#include "subtitles/timed_text.h"

namespace bundle {

/// Adds subtitle tracks to a whole MP4 file, in place, at its end: the samples come where the index
/// was, which is written again behind them. A failure may leave a damaged file: see `put_back`.
MaybeFailure add_text_tracks(const std::string& path, const std::vector<TextTrack>& tracks);

/// The index with the tracks, whose samples begin at the place `samples_at` of the file and stand
/// one behind the other. Empty when the index has no picture or no room for tracks.
std::string with_text_tracks(const std::string& moov, const std::vector<TextTrack>& tracks,
                             std::uint64_t samples_at);

}  // namespace bundle
