#include "transcode.h"

#include <unistd.h>

#include "console.h"
#include "encoder_arguments.h"
#include "ffmpeg_filters.h"
#include "ffmpeg_run.h"
#include "files.h"
#include "film_check.h"
#include "film_probe.h"
#include "film_report.h"
#include "private_file.h"
#include "progress.h"
#include "source_check.h"
#include "trace.h"

namespace bundle {

namespace {

MaybeFailure check_output(const TranscodeRequest& request) {
    if (same_file(request.input, request.output)) {
        return Failure{in_quotes(request.output) + " is the input file itself"};
    }
    if (!request.overwrite && exists(request.output)) {
        return Failure{in_quotes(request.output) + " exists already and -y is not given"};
    }
    return std::nullopt;
}

/// Asks for the colour filters only where they matter, and says what comes out without them.
bool colours_can_be_converted(const TranscodeRequest& request, const Film& film,
                              const StopSignals& stop) {
    const Colour& colour = film.video.colour;
    if (!needs_colour_conversion(colour) || has_colour_filters(stop)) {
        return true;
    }
    complain("ffmpeg",
             in_quotes(request.input) +
                 (is_high_dynamic_range(colour) ? " is HDR (high dynamic range)"
                                                : " has unusual colours") +
                 ", and the system's ffmpeg has no zscale and tonemap filters to convert that: the "
                 "colours stay as they are and look flat on most devices");
    return false;
}

void show_progress(const Progress& progress) {
    write_if_ready(STDERR_FILENO, old_progress_line(progress));
}

/// What a finished film of `duration` seconds lacks, as a trace tells it; usually nothing.
std::optional<Report> lacking(const TranscodeRequest& request, const Film& film, double duration,
                              const std::string& messages) {
    const std::string missing = shortfall(film.duration.value_or(0), duration);
    const std::string silent =
        film.has_lost_sound ? "The film has no sound: there is some in the source, but none that "
                              "can be decoded."
                            : "";
    if (missing.empty() && silent.empty()) {
        return std::nullopt;
    }
    return Report{in_quotes(request.input) + ": " + missing +
                      (missing.empty() || silent.empty() ? "" : " ") + silent,
                  missing.empty() ? "The film was delivered without sound."
                                  : "The film was delivered as far as it goes.",
                  messages, true};
}

/// Makes the output; what a trace has to tell about it.
Result<std::optional<Report>> convert(const TranscodeRequest& request, const StopSignals& stop) {
    auto output = PrivateFile::create(request.output);
    if (!output) {
        return output.failure();
    }
    if (auto failure = check_source(request.input, stop)) {
        return *failure;
    }
    if (auto failure = check_output(request)) {
        return *failure;
    }
    const auto film = probe_film(request.input, Sound::kHeard, stop);
    if (!film) {
        return film.failure();
    }
    FfmpegWork work{encoder_arguments(request, *film, output->path(),
                                      colours_can_be_converted(request, *film, stop))};
    work.subject = request.input;
    const auto messages = run_ffmpeg(work, show_progress, stop);
    if (!messages) {
        return output->explained(messages.failure());
    }
    const auto duration = check_film(output->path(), {film->audio.has_value()});
    if (!duration) {
        return output->explained(duration.failure());
    }
    if (auto failure = output->publish_whole(stop)) {
        return *failure;
    }
    return lacking(request, *film, *duration, *messages);
}

/// What became of an output that was not made; `was_there` tells whether there was an older one.
std::string untouched(const std::string& output, bool was_there) {
    return was_there ? "What was at " + in_quotes(output) + " before is still there."
                     : "Nothing was put at " + in_quotes(output) + ".";
}

}  // namespace

MaybeFailure report_film(const std::string& path, const StopSignals& stop) {
    // Nobody reads of the sound here: whether it can be heard is left to the conversion, which
    // asks.
    const auto film = probe_film(path, Sound::kAsTold, stop);
    if (!film) {
        return film.failure();
    }
    write_patiently(STDERR_FILENO, film_report(*film));
    return std::nullopt;
}

MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop) {
    const bool was_there = exists(request.output);
    const auto outcome = convert(request, stop);
    if (!outcome) {
        auto failure =
            about("cannot convert " + in_quotes(request.input) + " to " + in_quotes(request.output),
                  outcome.failure());
        // Who stops a conversion knows about it.
        if (stop.received() == 0) {
            tell_in_trace(request.output, Step::kConversion,
                          {failure.message,
                           "The movie " + in_quotes(request.input) + " was only read. " +
                               untouched(request.output, was_there),
                           failure.details});
        }
        return failure;
    }
    clear_trace(request.output, Step::kConversion);
    if (*outcome) {
        complain("ffmpeg", (*outcome)->happened);
        tell_in_trace(request.output, Step::kConversion, **outcome);
    }
    return std::nullopt;
}

void tell_of_refusal(const std::string& output, const Failure& failure) {
    tell_in_trace(output, Step::kConversion,
                  {"The command line was not understood: " + failure.message,
                   "No movie was read. " + untouched(output, exists(output)), ""});
}

}  // namespace bundle
