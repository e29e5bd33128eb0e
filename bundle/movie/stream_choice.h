#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "movie/sound_kind.h"

namespace bundle {

/// What the choice of a stream rests on.
struct StreamFacts {
    int index = 0;                    ///< its number in the file
    bool decodable = true;            ///< the system's ffmpeg knows how
    bool is_default = false;          ///< marked by the file's maker
    bool is_still = false;            ///< a cover, a thumbnail or another still picture
    std::optional<int> packets_seen;  ///< in the sample of the file's beginning; empty: no sample
    std::int64_t pixels = 0;          ///< of a frame; 0 for sound
    SoundKind sound = SoundKind::kDialogue;  ///< of a sound
};

/// True when the sample shows at most one frame of the stream: a picture, or a movie that begins
/// late.
bool may_be_one_frame(const StreamFacts& stream);

/// The place in the list of the movie itself among video streams: never a still or what cannot be
/// decoded; one that moves before one that may not; the default one first, then the largest, then
/// the first. Empty when there is none.
std::optional<std::size_t> choose_picture(const std::vector<StreamFacts>& streams);

/// The place in the list of the sound among audio streams, of those that can be decoded: of the
/// best kind, the default one first, then the first. Empty when there is none.
std::optional<std::size_t> choose_sound(const std::vector<StreamFacts>& streams);

}  // namespace bundle
