#include "movie/subtitle_choice.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "core/json_reading.h"
#include "movie/language_code.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr std::string_view kTeletext = "dvb_teletext";
constexpr std::array<std::string_view, 8> kTextCodecs{"subrip", "srt",      "ass",  "ssa",
                                                      "webvtt", "mov_text", "text", kTeletext};
// Each is an output of ffmpeg.
constexpr std::size_t kMost = 100;

bool is_text(const json& stream) {
    const std::string codec = text(stream, "codec_name");
    return std::find(kTextCodecs.begin(), kTextCodecs.end(), codec) != kTextCodecs.end();
}

TextStream text_stream(const json& stream) {
    const json& disposition = member(stream, "disposition");
    const json& tags = member(stream, "tags");
    return {whole(stream, "index"),
            text(stream, "codec_name"),
            mp4_language(text(tags, "language")),
            text(tags, "title"),
            whole(disposition, "default") != 0,
            whole(disposition, "forced") != 0};
}

}  // namespace

std::vector<TextStream> text_streams(const std::vector<const json*>& streams) {
    std::vector<TextStream> found;
    bool has_default = false;
    for (const json* stream : streams) {
        TextStream text = text_stream(*stream);
        if (!is_text(*stream) || found.size() == kMost) {
            continue;
        }
        text.is_default = text.is_default && !has_default;
        has_default = has_default || text.is_default;
        found.push_back(std::move(text));
    }
    return found;
}

bool is_teletext(const TextStream& stream) {
    return stream.codec == kTeletext;
}

bool has_mp4_text(const std::vector<TextStream>& streams) {
    return std::any_of(streams.begin(), streams.end(),
                       [](const TextStream& stream) { return stream.codec == "mov_text"; });
}

}  // namespace bundle
