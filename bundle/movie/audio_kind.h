#pragma once

#include <nlohmann/json_fwd.hpp>

namespace bundle {

/// What an audio stream is for, by its maker's marks; the later, the better it stands for the
/// movie.
enum class SoundKind {
    kAside,      ///< commentary, karaoke, or effects without voices
    kDescribed,  ///< dialogue with a voice that describes the picture
    kClearer,    ///< dialogue for people who are hard of hearing
    kDubbed,     ///< dialogue in another language than the original
    kDialogue,   ///< anything else, the original for instance
};

/// The kind by a stream's "disposition" in ffprobe's JSON. Titles are not read.
SoundKind sound_kind(const nlohmann::json& disposition);

}  // namespace bundle
