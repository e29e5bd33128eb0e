#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/numbers.h"
#include "core/result.h"
#include "movie/colour.h"
#include "movie/input_options.h"
#include "movie/movie_tags.h"
#include "movie/picture_geometry.h"
#include "movie/subtitle_choice.h"

namespace bundle {

/// The video stream that is reported and converted.
struct VideoStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    std::string pixel_format;
    std::string field_order;               ///< ffprobe's name: "progressive", "tt", ...
    Size stored;                           ///< in the file
    std::optional<Rational> aspect;        ///< of a stored pixel
    std::optional<double> rotation;        ///< in degrees; ffmpeg makes the frames upright
    Size shown;                            ///< upright and in square pixels
    Colour colour;                         ///< see `assumed_colour`
    bool needs_colour_conversion = false;  ///< see the function of this name
    bool may_be_one_frame = false;         ///< the sample of the beginning has no second one
    std::optional<Rational> average_rate;  ///< frames per second
    std::optional<Rational> base_rate;     ///< the lowest rate with all frame times
    std::optional<Rational> time_base;     ///< seconds per tick
    int decoding_delay = 0;                ///< see `decoding_delay`
    bool has_uneven_steps = false;         ///< see `mark_streams`
};

/// The audio stream that is reported and converted.
struct AudioStream {
    int index = 0;  ///< its number in the file
    std::string codec;
    int sample_rate = 0;  ///< Hz
    int channels = 0;
    bool has_layout = true;          ///< it is known which channel belongs to which speaker
    bool has_jittery_times = false;  ///< see `mark_streams`
    std::optional<int> right = {};   ///< the right side, if this is only the left
    bool has_false_times = false;    ///< see `mark_streams`
};

/// What is known about a movie before it is converted.
struct Movie {
    std::optional<double> duration;    ///< seconds
    bool duration_is_certain = false;  ///< not that of streams that are left out
    bool duration_may_be_end = false;  ///< it may be the timestamp of the end
    double start = 0;                  ///< seconds
    std::optional<std::int64_t> bit_rate;
    VideoStream video;
    std::optional<AudioStream> audio;
    bool has_undecodable_audio = false;  ///< it has audio, but none that can be decoded
    bool has_jumping_clock = false;      ///< see `JumpingClock`
    InputOptions pipe_options = {};      ///< for reading it without the jumps
    InputOptions input_options;          ///< for reading it as it was probed
    std::vector<TextStream> subtitles = {};
    /// Where it starts for ffmpeg without the edits of an MP4 file, which ffmpeg applies to text at
    /// the wrong times; in seconds. Known only for a conversion of such text.
    std::optional<double> text_start = {};
    MovieTags tags = {};
};

/// What `movie_from` reads, as ffprobe's `-show_entries` takes it.
extern const char* const kMovieEntries;

/// The movie in ffprobe's JSON: the streams that `choose_video` and `choose_audio` choose, never
/// one whose index is in `unusable`. Its "packets" are a sample of the file's beginning. Fails when
/// there is no video.
Result<Movie> movie_from(const nlohmann::json& probed, const std::set<int>& unusable = {});

/// The frame rate of the movie: the average, or the base rate if the average is unknown or higher,
/// since no frame can be shorter than a period of the base rate; 0 when unknown.
double frame_rate(const VideoStream& video);

/// True when the frame rate is not constant.
bool has_variable_rate(const VideoStream& video);

}  // namespace bundle
