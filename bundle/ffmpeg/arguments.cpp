#include "ffmpeg/arguments.h"

#include "core/files.h"
#include "ffmpeg/filters.h"
#include "ffmpeg/frame_times.h"
#include "ffmpeg/level.h"
#include "ffmpeg/shape_fit.h"
#include "ffmpeg/sound_chain.h"

namespace bundle {

namespace {

constexpr int kDefaultReferenceFrames = 2;

void append(std::vector<std::string>& arguments, std::initializer_list<std::string> more) {
    arguments.insert(arguments.end(), more);
}

void append(std::vector<std::string>& arguments, const std::vector<std::string>& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
}

void append(std::vector<std::string>& arguments, const std::vector<Option>& options) {
    for (const auto& [name, value] : options) {
        append(arguments, {name, value});
    }
}

int reference_frames(const TranscodeRequest& request) {
    for (const auto& [name, value] : request.video) {
        if (name == "-refs") {
            return static_cast<int>(parse_integer(value).value_or(kDefaultReferenceFrames));
        }
    }
    return kDefaultReferenceFrames;
}

int level(const TranscodeRequest& request, const Movie& movie) {
    const double rate = highest_rate(request, movie.video);
    const Size size = even({request.width, request.height});
    return h264_level(request.level, size.width, size.height, rate, reference_frames(request));
}

/// ffmpeg places the filters that make a rotated movie upright, and knows no other way to turn
/// frames of another size than to place all filters again.
std::vector<std::string> reading_options(const VideoStream& video) {
    return can_fit_shapes(video) && !video.rotation
               ? std::vector<std::string>{"-reinit_filter:v", "0"}
               : std::vector<std::string>{};
}

std::string stream(int index) {
    return "0:" + std::to_string(index);
}

}  // namespace

std::vector<std::string> encoder_arguments(const TranscodeRequest& request, const Movie& movie,
                                           const std::string& output, bool has_zscale) {
    std::vector<std::string> arguments = movie.input_options;
    append(arguments, reading_options(movie.video));
    append(arguments, movie.pipe_options);
    // What can be decoded of a damaged movie is kept, however little; how much that is, is judged
    // by what comes out.
    append(arguments, {"-max_error_rate", "1", "-i",
                       movie.has_jumping_clock ? "pipe:0" : file_url(request.input), "-map",
                       stream(movie.video.index)});
    if (movie.audio) {
        append(arguments, sound_source(*movie.audio));
        append(arguments, request.audio);
    }
    append(arguments, {"-c:v", "libx264", "-profile:v", "baseline", "-pix_fmt", "yuv420p"});
    append(arguments, request.video);
    append(arguments, {"-level:v", std::to_string(level(request, movie))});
    append(arguments, {"-vf", picture_filters(request, movie.video, has_zscale)});
    append(arguments, time_options(request, movie.video));
    append(arguments, request.general);
    append(arguments, tag_arguments(movie.tags));
    append(arguments, {file_url(output)});
    return arguments;
}

}  // namespace bundle
