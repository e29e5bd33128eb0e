#include "ffmpeg/plan.h"

#include <algorithm>

#include "core/console.h"
#include "core/files.h"
#include "ffmpeg/audio_filters.h"
#include "ffmpeg/filters.h"
#include "ffmpeg/frame_times.h"
#include "ffmpeg/level.h"
#include "ffmpeg/shape_fit.h"
#include "ffmpeg/text_streams.h"
#include "ffmpeg/words.h"

namespace bundle {

namespace {

void append_options(Words& arguments, const std::vector<Option>& options) {
    for (const auto& [name, value] : options) {
        append(arguments, {name, value});
    }
}

int level(const TranscodeRequest& request, const Movie& movie) {
    const Size size = even({request.width, request.height});
    return h264_level(request.level, size.width, size.height, highest_rate(request, movie.video),
                      request.reference_frames);
}

Words input_options(const Movie& movie, const ConversionPlan& plan) {
    Words options = plan.text_input.empty() ? text_options(plan.subtitles) : Words{};
    append(options, movie.input_options);
    // The filters that turn a rotated movie upright are ffmpeg's own, and adapt to frames of
    // another size only by being built again.
    if (can_fit_shapes(movie.video) && !movie.video.rotation) {
        append(options, {"-reinit_filter:v", "0"});
    }
    append(options, movie.pipe_options);
    // Whatever can be decoded of a damaged movie is kept; the result is checked instead.
    append(options, {"-max_error_rate", "1"});
    return options;
}

Words output_options(const TranscodeRequest& request, const Movie& movie, bool convert_colours) {
    Words options{"-map", "0:" + std::to_string(movie.video.index)};
    if (movie.audio) {
        append(options, audio_source(*movie.audio));
        append_options(options, request.audio);
    }
    append(options, {"-c:v", "libx264", "-profile:v", "baseline", "-pix_fmt", "yuv420p"});
    append_options(options, request.video);
    append(options, {"-refs", std::to_string(request.reference_frames)});
    append(options, {"-level:v", std::to_string(level(request, movie))});
    append(options, {"-vf", picture_filters(request, movie.video, convert_colours)});
    append(options, time_options(request, movie.video));
    append_options(options, request.general);
    append(options, tag_arguments(movie.tags));
    return options;
}

void plan_subtitles(ConversionPlan& plan, const Movie& movie, bool can_decode_teletext) {
    plan.subtitles = movie.subtitles;
    if (!can_decode_teletext && std::erase_if(plan.subtitles, is_teletext) > 0) {
        plan.notes.push_back(in_quotes(plan.input) +
                             " has teletext subtitles, which the system's ffmpeg cannot decode: "
                             "they are left out");
    }
    if (has_mp4_text(plan.subtitles)) {
        const double offset = movie.text_start.value_or(movie.start) - movie.start;
        plan.text_input = text_input(plan.subtitles, plan.input, offset);
    }
}

std::string colour_note(const std::string& input, const Colour& colour) {
    return in_quotes(input) +
           (is_high_dynamic_range(colour) ? " is HDR (high dynamic range)"
                                          : " has unusual colours") +
           ", and the system's ffmpeg has no zscale and tonemap filters to convert that: the "
           "colours stay as they are and look flat on most devices";
}

}  // namespace

ConversionPlan plan_conversion(const TranscodeRequest& request, const Movie& movie,
                               const SystemFilters& system) {
    const VideoStream& video = movie.video;
    const bool convert_colours = video.needs_colour_conversion && system.can_convert_colours;
    ConversionPlan plan;
    plan.input = request.input;
    plan.skips_jumps = movie.has_jumping_clock;
    plan.duration = movie.duration.value_or(0);
    plan.rate = request.rate ? request.rate->value() : frame_rate(video);
    plan.has_audio = movie.audio.has_value();
    plan.fills_gaps = !request.rate && !has_variable_rate(video);
    if (video.needs_colour_conversion && !convert_colours) {
        plan.notes.push_back(colour_note(plan.input, video.colour));
    }
    plan_subtitles(plan, movie, system.can_decode_teletext);
    plan.input_options = input_options(movie, plan);
    plan.output_options = output_options(request, movie, convert_colours);
    return plan;
}

std::vector<std::string> arguments_of(const ConversionPlan& plan, const std::string& output,
                                      const std::vector<int>& scripts) {
    Words arguments = plan.input_options;
    append(arguments, {"-i", plan.skips_jumps ? "pipe:0" : file_url(plan.input)});
    append(arguments, plan.text_input);
    append(arguments, plan.output_options);
    append(arguments, {file_url(output)});
    const int input = plan.text_input.empty() ? 0 : 1;
    for (std::size_t at = 0; at < std::min(scripts.size(), plan.subtitles.size()); ++at) {
        append(arguments, script_output(plan.subtitles[at], input, scripts[at]));
    }
    return arguments;
}

}  // namespace bundle
