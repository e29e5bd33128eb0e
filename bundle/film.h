#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "numbers.h"
#include "result.h"

namespace bundle {

/// The video stream that is reported and converted.
struct VideoStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    std::string pixel_format;
    int width = 0;                         ///< as a player shows it: upright and in square pixels
    int height = 0;                        ///< as above
    std::optional<Rational> average_rate;  ///< frames per second
    std::optional<Rational> base_rate;     ///< the rate that expresses all frame times
    std::optional<Rational> time_base;     ///< seconds per tick
};

/// The audio stream that is reported and converted.
struct AudioStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    int sample_rate = 0;  ///< Hz
    int channels = 0;
};

/// What is known about a film before it is converted.
struct Film {
    std::optional<double> duration;  ///< seconds
    double start = 0;                ///< seconds
    std::optional<std::int64_t> bit_rate;
    VideoStream video;
    std::optional<AudioStream> audio;
};

/// What `film_from` reads, as ffprobe's `-show_entries` takes it.
extern const char* const kFilmEntries;

/// The film in ffprobe's JSON: the first video stream that is no cover picture, and the first audio
/// stream with a known codec. Fails when there is no such video stream.
Result<Film> film_from(const nlohmann::json& probed);

/// The rate that goes for the film's own: the average one, else the base rate; 0 when unknown.
double frame_rate(const VideoStream& video);

}  // namespace bundle
