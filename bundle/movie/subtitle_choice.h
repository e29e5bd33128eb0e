#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace bundle {

/// A subtitle stream of the movie that consists of text.
struct TextStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    std::string language;  ///< as MP4 files name it
    std::string title;     ///< usually empty
    bool is_default = false;
    bool is_forced = false;  ///< shown to everybody: what is written or spoken in another language

    bool operator==(const TextStream&) const = default;
};

/// Those of ffprobe's subtitle streams that consist of text ffmpeg can decode, in their
/// order. At most one of them is the default: the first one that is marked so. Pictures of text, as
/// DVDs, Blu-rays and DVB have, are none, and of more than a hundred the rest is left out.
std::vector<TextStream> text_streams(const std::vector<const nlohmann::json*>& streams);

/// True for a stream of teletext, which not every ffmpeg can decode.
bool is_teletext(const TextStream& stream);

/// True when one of them is the text of an MP4 file.
bool has_mp4_text(const std::vector<TextStream>& streams);

}  // namespace bundle
