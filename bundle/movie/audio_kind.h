#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// The purpose of an audio stream, from its disposition flags; a later one is the better choice.
enum class AudioKind {
    kCommentary,        ///< commentary, karaoke, or effects without voices
    kAudioDescription,  ///< dialogue, and a voice that describes the picture
    kHearingImpaired,   ///< dialogue for people who are hard of hearing
    kDubbed,            ///< dialogue in another language than the original
    kMain,              ///< anything else, for instance the original
};

/// The kind by a stream's "disposition" in ffprobe's JSON. Titles are ignored.
AudioKind audio_kind(const nlohmann::json& disposition);

}  // namespace bundle
