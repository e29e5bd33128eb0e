#include "transcode.h"

#include <unistd.h>

#include "console.h"
#include "encoder_arguments.h"
#include "ffmpeg_filters.h"
#include "ffmpeg_run.h"
#include "files.h"
#include "film_probe.h"
#include "film_report.h"
#include "private_file.h"
#include "progress.h"
#include "source_check.h"

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

}  // namespace

MaybeFailure report_film(const std::string& path, const StopSignals& stop) {
    const auto film = probe_film(path, stop);
    if (!film) {
        return film.failure();
    }
    write_patiently(STDERR_FILENO, film_report(*film));
    return std::nullopt;
}

MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop) {
    auto output = PrivateFile::create(request.output);
    if (!output) {
        return output.failure();
    }
    if (auto failure = check_source(request.input, stop)) {
        return failure;
    }
    if (auto failure = check_output(request)) {
        return failure;
    }
    const auto film = probe_film(request.input, stop);
    if (!film) {
        return film.failure();
    }
    FfmpegWork work{encoder_arguments(request, *film, output->path(),
                                      colours_can_be_converted(request, *film, stop))};
    work.subject = request.input;
    if (auto failure = run_ffmpeg(work, show_progress, stop)) {
        return failure;
    }
    return output->publish_whole(stop);
}

}  // namespace bundle
