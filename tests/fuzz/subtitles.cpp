// A subtitle file with any content: its text, and the cues of the track.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/require.h"
#include "subtitles/ass_script.h"
#include "subtitles/cue_track.h"
#include "subtitles/subrip.h"
#include "subtitles/text_encoding.h"

namespace {

using bundle::Cue;

std::string time_text(std::int64_t ms) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld,%03lld",
                  static_cast<long long>(ms / 3600000), static_cast<long long>(ms / 60000 % 60),
                  static_cast<long long>(ms / 1000 % 60), static_cast<long long>(ms % 1000));
    return text.data();
}

/// The cues in SubRip format; nothing if a text looks like a time itself.
std::string subrip_of(const std::vector<Cue>& cues) {
    std::string text;
    for (const Cue& cue : cues) {
        if (cue.text.find("-->") != std::string::npos)
            return "";
        text += "1\n" + time_text(cue.start_ms) + " --> " + time_text(cue.end_ms) + "\n" +
                cue.text + "\n\n";
    }
    return text;
}

void check_track(const std::vector<Cue>& cues) {
    std::int64_t end = 0;
    for (const Cue& cue : cues) {
        REQUIRE(cue.start_ms >= end && cue.end_ms > cue.start_ms);
        REQUIRE(cue.start_ms % 10 == 0 && cue.end_ms % 10 == 0);
        REQUIRE(!cue.text.empty() && cue.text.find("\n\n") == std::string::npos);
        REQUIRE(bundle::ass_text(cue.text).find('\n') == std::string::npos);
        end = cue.end_ms;
    }
    REQUIRE(bundle::one_at_a_time(cues) == cues);
}

/// The cue is shown from its start to its end, alone or with others.
void check_is_shown(const Cue& cue, const std::vector<Cue>& track, bool are_few) {
    auto shown = std::find_if(track.begin(), track.end(), [&cue](const Cue& one) {
        return one.start_ms == (cue.start_ms + 5) / 10 * 10;
    });
    REQUIRE(shown != track.end());
    REQUIRE(!are_few || shown->text.find(cue.text) != std::string::npos);
    std::int64_t end = shown->end_ms;
    while (++shown != track.end() && shown->start_ms == end)
        end = shown->end_ms;
    REQUIRE(end + 5 >= cue.end_ms);
}

/// Nothing is shown when there is no cue.
void check_is_meant(const Cue& shown, const std::vector<Cue>& cues) {
    REQUIRE(std::any_of(cues.begin(), cues.end(), [&shown](const Cue& cue) {
        const auto end = cue.end_ms > cue.start_ms ? cue.end_ms : cue.start_ms + 2000;
        return shown.text.ends_with(cue.text) && cue.start_ms <= shown.start_ms + 5 &&
               end + 15 >= shown.end_ms;
    }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = bundle::text_in_utf8({reinterpret_cast<const char*>(data), size});
    if (!text) {
        REQUIRE(!text.failure().message.empty());
        return 0;
    }
    REQUIRE(bundle::is_utf8_text(*text));
    REQUIRE(text->size() <= 4 * size);

    const auto cues = bundle::read_subrip(*text);
    const auto track = bundle::one_at_a_time(cues);
    REQUIRE(track.size() <= 2 * cues.size());
    REQUIRE(track.empty() == cues.empty());
    check_track(track);
    for (const Cue& cue : cues)
        check_is_shown(cue, track, cues.size() <= 8);
    for (const Cue& cue : track)
        check_is_meant(cue, cues);
    if (const std::string again = subrip_of(cues); !again.empty())
        REQUIRE(bundle::read_subrip(again) == cues);
    return 0;
}
