#include "encoder_arguments.h"

#include "files.h"
#include "h264_level.h"

namespace bundle {

namespace {

constexpr int kDefaultReferenceFrames = 2;

void append(std::vector<std::string>& arguments, std::initializer_list<std::string> more) {
    arguments.insert(arguments.end(), more);
}

void append(std::vector<std::string>& arguments, const std::vector<Option>& options) {
    for (const auto& [name, value] : options) {
        append(arguments, {name, value});
    }
}

/// The side that 4:2:0 can hold: the even number that is not above it.
int even(int side) {
    return side / 2 * 2;
}

int reference_frames(const TranscodeRequest& request) {
    for (const auto& [name, value] : request.video) {
        if (name == "-refs") {
            return static_cast<int>(parse_integer(value).value_or(kDefaultReferenceFrames));
        }
    }
    return kDefaultReferenceFrames;
}

int level(const TranscodeRequest& request, const Film& film) {
    const double rate = request.rate ? request.rate->value() : frame_rate(film.video);
    return h264_level(request.level, even(request.width), even(request.height), rate,
                      reference_frames(request));
}

/// The asked rate is made by a filter: ffmpeg's own "-r" adds frames at the end of the film.
std::string picture_filter(const TranscodeRequest& request) {
    std::string filter;
    if (request.rate) {
        filter = "fps=" + std::to_string(request.rate->numerator) + "/" +
                 std::to_string(request.rate->denominator) + ",";
    }
    return filter + "scale=" + std::to_string(even(request.width)) + ":" +
           std::to_string(even(request.height)) + ",setsar=1";
}

std::string stream(int index) {
    return "0:" + std::to_string(index);
}

}  // namespace

std::vector<std::string> encoder_arguments(const TranscodeRequest& request, const Film& film,
                                           const std::string& output) {
    std::vector<std::string> arguments{"-i", file_url(request.input), "-map",
                                       stream(film.video.index)};
    if (film.audio) {
        append(arguments, {"-map", stream(film.audio->index)});
        append(arguments, request.audio);
    }
    append(arguments, {"-c:v", "libx264", "-profile:v", "baseline", "-pix_fmt", "yuv420p"});
    append(arguments, request.video);
    append(arguments, {"-level:v", std::to_string(level(request, film))});
    append(arguments, {"-vf", picture_filter(request)});
    append(arguments, request.general);
    append(arguments, {file_url(output)});
    return arguments;
}

}  // namespace bundle
