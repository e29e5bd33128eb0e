#pragma once

#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// The cues as one track can hold them: in the order of their times, in hundredths of a second, one
/// at a time.
///
/// Cues that do not overlap stay what they are. Where some do, each of their beginnings and ends
/// begins a new one with the texts of all that are shown then, the one that began first on top; for
/// n cues these are 2n - 1 at most. A cue that overlaps with the next one for less than a tenth of
/// a second ends where that one begins. Of more than eight at a time the eight that began last are
/// shown. In a track of more than 32 MiB of text the rest are shown alone, from their beginnings.
/// A cue whose end is not behind its beginning is shown up to the next one, for two seconds at
/// most.
std::vector<Cue> one_at_a_time(std::vector<Cue> cues);

}  // namespace bundle
