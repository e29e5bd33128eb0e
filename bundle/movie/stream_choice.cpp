#include "movie/stream_choice.h"

#include <array>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include "core/json_reading.h"

namespace bundle {

namespace {

/// The position of the qualifying stream with the highest rank, the first one of equals.
template <typename Qualifies, typename Rank>
std::optional<std::size_t> best(const std::vector<StreamFacts>& streams, Qualifies qualifies,
                                Rank rank) {
    std::optional<std::size_t> found;
    for (std::size_t at = 0; at < streams.size(); ++at) {
        if (qualifies(streams[at]) && (!found || rank(streams[at]) > rank(streams[*found]))) {
            found = at;
        }
    }
    return found;
}

}  // namespace

AudioKind audio_kind(const nlohmann::json& disposition) {
    static constexpr std::array<std::pair<const char*, AudioKind>, 7> kFlags{{
        {"comment", AudioKind::kCommentary},
        {"karaoke", AudioKind::kCommentary},
        {"clean_effects", AudioKind::kCommentary},
        {"visual_impaired", AudioKind::kAudioDescription},
        {"descriptions", AudioKind::kAudioDescription},
        {"hearing_impaired", AudioKind::kHearingImpaired},
        {"dub", AudioKind::kDubbed},
    }};
    for (const auto& [flag, kind] : kFlags) {
        if (whole(disposition, flag) != 0) {
            return kind;
        }
    }
    return AudioKind::kMain;
}

bool may_be_one_frame(const StreamFacts& stream) {
    return stream.packets_seen && *stream.packets_seen < 2;
}

std::optional<std::size_t> choose_video(const std::vector<StreamFacts>& streams) {
    return best(
        streams, [](const StreamFacts& stream) { return stream.decodable && !stream.is_still; },
        [](const StreamFacts& stream) {
            return std::tuple(!may_be_one_frame(stream), stream.is_default, stream.pixels);
        });
}

std::optional<std::size_t> choose_audio(const std::vector<StreamFacts>& streams) {
    return best(
        streams, [](const StreamFacts& stream) { return stream.decodable; },
        [](const StreamFacts& stream) { return std::tuple(stream.audio_kind, stream.is_default); });
}

}  // namespace bundle
