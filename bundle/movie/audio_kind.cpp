#include "movie/sound_kind.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/json_reading.h"

namespace bundle {

SoundKind sound_kind(const nlohmann::json& disposition) {
    static constexpr std::array<std::pair<const char*, SoundKind>, 7> kMarks{{
        {"comment", SoundKind::kAside},
        {"karaoke", SoundKind::kAside},
        {"clean_effects", SoundKind::kAside},
        {"visual_impaired", SoundKind::kDescribed},
        {"descriptions", SoundKind::kDescribed},
        {"hearing_impaired", SoundKind::kClearer},
        {"dub", SoundKind::kDubbed},
    }};
    for (const auto& [mark, kind] : kMarks) {
        if (whole(disposition, mark) != 0) {
            return kind;
        }
    }
    return SoundKind::kDialogue;
}

}  // namespace bundle
