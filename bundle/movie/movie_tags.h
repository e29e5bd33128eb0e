#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// What a movie's file says about the movie and ffmpeg does not carry over by itself.
struct MovieTags {
    std::string recorded;        ///< when, as ffmpeg reads times; empty: unknown
    std::string local_day;       ///< the same in the time zone of the place, where that is known
    std::string place;           ///< where, as ISO 6709 writes it; empty: unknown
    std::string audio_language;  ///< as MP4 files name it; empty: not said

    bool operator==(const MovieTags&) const = default;
};

/// A time such as "2024-05-01T14:00:00+0200" or "2024-05-01 14:00:00", which is one of this
/// machine's time zone. Empty for what is none, and for years that only clocks that were never set
/// show: up to 1970, which includes the zero times of 1904, and from 2040 on, beyond the times of
/// MP4 files.
std::string recording_time(std::string_view text);

/// The tags of the container, of the picture's stream and of the sound's, which may be null, in
/// ffprobe's JSON. Of two dates the one that phones write when they record comes first: that of the
/// container changes when a movie is cut.
MovieTags movie_tags(const nlohmann::json& format, const nlohmann::json& picture,
                     const nlohmann::json& sound);

/// The options that make ffmpeg write the tags.
std::vector<std::string> tag_arguments(const MovieTags& tags);

}  // namespace bundle
