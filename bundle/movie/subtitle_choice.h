#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace bundle {

/// A subtitle stream of text.
struct TextStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    std::string language;  ///< as MP4 files name it
    std::string title;     ///< usually empty
    bool is_default = false;
    bool is_forced = false;  ///< for everybody: translates foreign signs and dialogue

    bool operator==(const TextStream&) const = default;
};

/// The text streams among ffprobe's subtitle streams, in their order and at most a hundred; bitmap
/// subtitles, as on DVD, Blu-ray and DVB, are left out. At most one is the default: the first with
/// that flag.
std::vector<TextStream> text_streams(const std::vector<const nlohmann::json*>& streams);

/// True for teletext, which not every ffmpeg can decode.
bool is_teletext(const TextStream& stream);

/// True when one of them is the text of an MP4 file.
bool has_mp4_text(const std::vector<TextStream>& streams);

}  // namespace bundle
