#pragma once

#include <string>
#include <vector>

#include "core/result.h"
#include "subtitles/subrip.h"

namespace bundle {

/// Reads the cues of a subtitle file in SubRip form, in the usual encodings, ready for one track.
///
/// Fails for a file that can't be read, is larger than any subtitle file, is no text or holds no
/// cue.
Result<std::vector<Cue>> read_subtitles(const std::string& path);

}  // namespace bundle
