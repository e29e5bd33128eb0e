#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "subtitles/placement.h"
#include "subtitles/subrip.h"

namespace bundle {

/// A subtitle track for an MP4 file.
struct TextTrack {
    std::vector<Cue> cues;  ///< one at a time, in order; marked as `StyledText`
    std::string language = "und";
    std::string name;         ///< of the handler
    bool is_enabled = false;  ///< shown by default
    bool is_forced = false;
};

/// What the MP4 file determines about a track.
struct TrackSetting {
    std::uint64_t samples_at = 0;  ///< offset of the track's samples in the file
    std::uint32_t id = 1;
    std::uint32_t movie_scale = 1000;  ///< ticks per second of the MP4 file
    TextPlace place;
};

/// The track's samples one after another (3GPP TS 26.245, 5.17), an empty one wherever nothing is
/// shown.
std::string text_samples(const TextTrack& track);

/// The track's "trak" box (ISO/IEC 14496-12 and 3GPP TS 26.245) for these samples.
std::string text_trak(const TextTrack& track, const TrackSetting& setting);

}  // namespace bundle
