#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// Metadata of a movie that ffmpeg does not copy by itself.
struct MovieTags {
    std::string recorded;        ///< when, as ffmpeg reads times; empty: unknown
    std::string local_day;       ///< the same with the place's time zone, if known
    std::string place;           ///< where, as ISO 6709 writes it; empty: unknown
    std::string audio_language;  ///< as MP4 files name it; empty: unknown

    bool operator==(const MovieTags&) const = default;
};

/// A time such as "2024-05-01T14:00:00+0200", or "2024-05-01 14:00:00" in this machine's time zone.
/// Empty for any other text, and for years that only an unset clock or an empty field gives: up to
/// 1970, which includes the zero of 1904, and from 2040 on, which MP4 files cannot express.
std::string recording_time(std::string_view text);

/// The metadata in the tags of the container, of the video stream and of the audio stream, which
/// may be null, in ffprobe's JSON. The date that phones write when they record comes first: that of
/// the container changes when a movie is edited.
MovieTags movie_tags(const nlohmann::json& format, const nlohmann::json& video,
                     const nlohmann::json& audio);

/// The options that make ffmpeg write the tags.
std::vector<std::string> tag_arguments(const MovieTags& tags);

}  // namespace bundle
