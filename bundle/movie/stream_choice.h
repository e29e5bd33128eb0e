#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <vector>

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

/// What the choice of a stream is based on.
struct StreamFacts {
    int index = 0;                    ///< its number in the file
    bool decodable = true;            ///< the system's ffmpeg has a decoder
    bool is_default = false;          ///< has the default flag
    bool is_still = false;            ///< a cover, a thumbnail or another still picture
    std::optional<int> packets_seen;  ///< in the sample of the file's beginning; empty: no sample
    std::int64_t pixels = 0;          ///< of a frame; 0 for audio
    AudioKind audio_kind = AudioKind::kMain;
};

/// True when the sample has at most one frame of the stream: it is a picture, or a video that
/// starts late.
bool may_be_one_frame(const StreamFacts& stream);

/// The position in the list of the video stream to convert: not a still picture, and decodable; one
/// with several frames before one that may have a single one; then the default one, the largest,
/// the first. Empty when there is none.
std::optional<std::size_t> choose_video(const std::vector<StreamFacts>& streams);

/// The position in the list of the audio stream to convert, of those that can be decoded: of the
/// best kind, then the default one, then the first. Empty when there is none.
std::optional<std::size_t> choose_audio(const std::vector<StreamFacts>& streams);

}  // namespace bundle
