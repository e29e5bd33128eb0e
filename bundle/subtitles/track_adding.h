#pragma once

#include <string>
#include <vector>

#include "core/result.h"
#include "subtitles/timed_text.h"

namespace bundle {

/// Adds subtitle tracks to a complete MP4 file, in place: the samples replace the index at its end,
/// and the new index follows them. A failure may leave a damaged file; see `put_back`.
MaybeFailure add_text_tracks(const std::string& path, const std::vector<TextTrack>& tracks);

/// The index with the tracks, whose samples start at the offset `samples_at` of the file, one after
/// another. Empty when the index has no picture or can't take tracks.
std::string with_text_tracks(const std::string& moov, const std::vector<TextTrack>& tracks,
                             std::uint64_t samples_at);

}  // namespace bundle
