// A subtitle file that holds anything: its text, and the cues that a track gets.

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "ass_script.h"
#include "fuzz/require.h"
#include "subrip.h"
#include "text_encoding.h"

namespace {

using bundle::Cue;

std::string time_text(std::int64_t ms) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld,%03lld",
                  static_cast<long long>(ms / 3600000), static_cast<long long>(ms / 60000 % 60),
                  static_cast<long long>(ms / 1000 % 60), static_cast<long long>(ms % 1000));
    return text.data();
}

/// The cues in SubRip form; nothing where a text looks like a time itself.
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
        REQUIRE(!cue.text.empty() && cue.text.find("\n\n") == std::string::npos);
        REQUIRE(bundle::ass_text(cue.text).find('\n') == std::string::npos);
        end = cue.end_ms;
    }
    REQUIRE(bundle::one_at_a_time(cues) == cues);
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
    REQUIRE(track.size() <= cues.size());
    REQUIRE(track.empty() == cues.empty());
    check_track(track);
    if (const std::string again = subrip_of(cues); !again.empty())
        REQUIRE(bundle::read_subrip(again) == cues);
    return 0;
}
