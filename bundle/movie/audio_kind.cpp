#include "movie/audio_kind.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/json_reading.h"

namespace bundle {

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

}  // namespace bundle
