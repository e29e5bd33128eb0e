#pragma once

#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// The cues as a track takes them: ordered, in hundredths of a second, one at a time.
///
/// Cues that do not overlap stay as they are. Where some overlap, a new cue starts whenever one of
/// them starts or ends, with the texts of all that are shown then, the one that started first on
/// top; n cues give at most 2n - 1. A cue that overlaps the next one by less than a tenth of a
/// second ends where that one starts. Of more than eight at a time, the eight that started last are
/// shown. After 32 MiB of text each cue is shown alone, from its start. A cue that does not end
/// after its start is shown until the next one, for at most two seconds.
std::vector<Cue> one_at_a_time(std::vector<Cue> cues);

}  // namespace bundle
