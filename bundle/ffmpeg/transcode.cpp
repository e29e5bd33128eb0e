#include "ffmpeg/transcode.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "clock/intended_length.h"
#include "core/console.h"
#include "core/files.h"
#include "ffmpeg/encode.h"
#include "ffmpeg/picture_gaps.h"
#include "movie/probe.h"
#include "movie/rejection.h"
#include "movie/report.h"
#include "mp4/check.h"
#include "output/failure_note.h"
#include "output/failure_reports.h"
#include "output/private_file.h"
#include "process/own_end.h"
#include "process/source_check.h"

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

constexpr const char* kOnGaps =
    "Check whether the picture of the movie stands still too when it plays. If it does, get "
    "another copy and convert it again; keep this one until then.";

/// How much of a movie that lasts to its end is damaged, for the failure note; usually nothing.
std::optional<FailureNote> damage(const TranscodeRequest& request, const EncodedMovie& made) {
    const auto& audio = made.movie.audio;
    const std::string gaps = picture_gaps(made.frames, frame_rate(made.movie.video));
    if (gaps.empty() ||
        !has_other_errors(made.messages, audio ? audio->index : -1, audio ? audio->codec : "?")) {
        return std::nullopt;
    }
    return FailureNote{in_quotes(request.input) + ": " + gaps,
                       "The MP4 file " + in_quotes(request.output) +
                           " was made, with what can be read of the movie.",
                       made.messages,
                       true,
                       kOnGaps,
                       "The picture of the MP4 file stands still where the movie is damaged."};
}

std::string advice_on_lacking(bool is_whole) {
    return is_whole ? "Check whether the movie has sound when it plays. Keep the movie until you "
                      "have a copy whose sound can be converted."
                    : "Check whether the movie plays to its end. If it does not, get the whole "
                      "movie and convert it again; keep this one until then.";
}

/// What an MP4 file lacks, for the failure note; usually nothing.
std::optional<FailureNote> lacking(const TranscodeRequest& request, const EncodedMovie& made) {
    const double promised =
        std::max(made.movie.duration.value_or(0), intended_length(request.input, made.duration));
    const std::string missing = shortfall(promised, made.duration);
    const std::string silent =
        made.movie.has_lost_sound
            ? "The MP4 file has no sound: the movie has some, but none that can be decoded."
            : "";
    if (missing.empty() && silent.empty()) {
        return damage(request, made);
    }
    return FailureNote{
        in_quotes(request.input) + ": " + missing + (missing.empty() || silent.empty() ? "" : " ") +
            silent,
        "The MP4 file " + in_quotes(request.output) + " was made, " +
            (missing.empty() ? "without sound." : "with what there is of the movie."),
        made.messages,
        true,
        advice_on_lacking(missing.empty()),
        missing.empty() ? "The MP4 file has no sound: the movie's cannot be decoded."
                        : "The MP4 file is shorter than the movie should be."};
}

/// Makes the output and returns the failure note about it, usually none.
Result<std::optional<FailureNote>> convert(const TranscodeRequest& request,
                                           const StopSignals& stop) {
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
    const auto made = encode_movie(request, *output, stop);
    if (!made) {
        return made.failure();
    }
    if (auto failure = output->publish_whole(stop)) {
        return *failure;
    }
    return lacking(request, *made);
}

/// What became of an output that was not made; `was_there` tells whether there was an older one.
std::string untouched(const std::string& output, bool was_there) {
    return was_there ? "The older MP4 file " + in_quotes(output) + " is still there."
                     : "There is no MP4 file " + in_quotes(output) + ".";
}

/// Where the failure notes of a conversion go. Nothing is written to a drive that does not answer.
Subject subject_of(const TranscodeRequest& request, Cause cause = Cause::kUnknown) {
    const bool hangs = cause == Cause::kDriveSilent || cause == Cause::kStalled;
    return {request.output, hangs ? "" : request.input};
}

/// True for the end of a conversion about which the person knows.
bool is_expected(const StopSignals& stop) {
    return stop.received() != 0 ? is_ended_by_program() : is_being_canceled();
}

/// Says on the console why the program will not take a movie that was reported on.
void tell_rejection(const std::string& path, const Movie& movie) {
    if (const auto reason = rejection_of(movie)) {
        complain("ffmpeg", in_quotes(path) + " cannot be converted: " + *reason);
    }
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
    tell_rejection(path, *movie);
    return std::nullopt;
}

MaybeFailure transcode(const TranscodeRequest& request, const StopSignals& stop) {
    const bool was_there = exists(request.output);
    const auto outcome = convert(request, stop);
    if (!outcome) {
        auto failure =
            about("cannot convert " + in_quotes(request.input) + " to " + in_quotes(request.output),
                  outcome.failure());
        if (!is_expected(stop)) {
            report_failure(
                subject_of(request, failure.cause), Step::kConversion,
                failure_note(Step::kConversion, failure,
                             "The movie " + in_quotes(request.input) + " was only read. " +
                                 untouched(request.output, was_there)));
        }
        return failure;
    }
    clear_note(subject_of(request), Step::kConversion);
    if (*outcome) {
        complain("ffmpeg", (*outcome)->happened);
        report_failure(subject_of(request), Step::kConversion, **outcome);
    }
    return std::nullopt;
}

void tell_of_refusal(const std::string& output, const Failure& failure) {
    const Failure why = failure_by(Cause::kNotUnderstood,
                                   "The command line was not understood: " + failure.message);
    report_failure({output, ""}, Step::kConversion,
                   failure_note(Step::kConversion, why,
                                "No movie was read. " + untouched(output, exists(output))));
}

}  // namespace bundle
