#include "transcode.h"

#include <unistd.h>

#include "console.h"
#include "encoder_arguments.h"
#include "ffmpeg_run.h"
#include "ffprobe.h"
#include "files.h"
#include "film_report.h"
#include "private_file.h"
#include "progress.h"

namespace bundle {

namespace {

MaybeFailure check_output(const TranscodeRequest& request) {
    if (same_file(request.input, request.output)) {
        return Failure{"the output is the input file itself"};
    }
    if (!request.overwrite && exists(request.output)) {
        return Failure{"the output exists already and -y is not given"};
    }
    return std::nullopt;
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
    if (auto failure = check_output(request)) {
        return failure;
    }
    auto output = PrivateFile::create(request.output);
    if (!output) {
        return output.failure();
    }
    const auto film = probe_film(request.input, stop);
    if (!film) {
        return film.failure();
    }
    const FfmpegWork work{encoder_arguments(request, *film, output->path())};
    if (auto failure = run_ffmpeg(work, show_progress, stop)) {
        return failure;
    }
    return output->publish_whole(stop);
}

}  // namespace bundle
