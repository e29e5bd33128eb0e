#pragma once

#include <string>
#include <vector>

#include "core/result.h"
#include "subtitles/subrip.h"

namespace bundle {

/// Reads the cues of a SubRip file in any usual encoding, ready for one track.
///
/// Fails for a file that can't be read, is larger than any subtitle file, is not text or has no
/// cues.
Result<std::vector<Cue>> read_subtitles(const std::string& path);

}  // namespace bundle
