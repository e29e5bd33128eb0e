#include "ffmpeg/transcode.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

#include "core/console.h"
#include "core/files.h"
#include "ffmpeg/encode.h"
#include "ffmpeg/outcome.h"
#include "movie/probe.h"
#include "movie/rejection.h"
#include "movie/report.h"
#include "output/private_file.h"
#include "process/own_end.h"

namespace bundle {

namespace {

MaybeFailure check_output(const TranscodeRequest& request) {
    if (same_file(request.input, request.output)) {
        return failure_by(Cause::kTargetIsMovie,
                          in_quotes(request.output) + " is the input file itself");
    }
    if (!request.overwrite && exists(request.output)) {
        return Failure{in_quotes(request.output) + " exists already and -y is not given"};
    }
    return std::nullopt;
}

/// Makes the output; what it lacks.
Result<std::optional<FailureNote>> convert(const TranscodeRequest& request,
                                           const StopSignals& stop) {
    const auto probed = probe_for_conversion(request.input, stop);
    if (!probed) {
        return probed.failure();
    }
    const auto movie = find_movie_to_convert(request.input, *probed, {}, stop);
    if (!movie) {
        return movie.failure();
    }
    if (auto failure = check_output(request)) {
        return *failure;
    }
    auto output = PrivateFile::create(request.output);
    if (!output) {
        return output.failure();
    }
    const auto made = encode_movie(request, *probed, *movie, *output, stop);
    if (!made) {
        return made.failure();
    }
    if (auto failure = output->publish_whole(stop)) {
        return *failure;
    }
    return shortcomings(request, *made);
}

/// True for the end of a conversion that the person knows about.
bool is_expected(const StopSignals& stop) {
    return stop.received() != 0 ? is_ended_by_program() : is_being_canceled();
}

}  // namespace

MaybeFailure report_movie(const std::string& path, const StopSignals& stop) {
    const auto probed = probe_for_report(path, stop);
    if (!probed) {
        return probed.failure();
    }
    const auto movie = find_movie(path, *probed, {}, stop);
    if (!movie) {
        return movie.failure();
    }
    write_patiently(STDERR_FILENO, movie_report(*movie));
    if (const auto reason = rejection_of(*movie)) {
        complain("ffmpeg", in_quotes(path) + " cannot be converted: " + *reason);
    }
    return std::nullopt;
}

MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop) {
    const bool was_there = exists(request.output);
    const auto lacking = convert(request, stop);
    if (lacking) {
        note_success(request, *lacking);
        return std::nullopt;
    }
    auto failure =
        about("cannot convert " + in_quotes(request.input) + " to " + in_quotes(request.output),
              lacking.failure());
    if (!is_expected(stop)) {
        note_failure(request, failure, was_there);
    }
    return failure;
}

}  // namespace bundle
