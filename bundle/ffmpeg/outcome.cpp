#include "ffmpeg/outcome.h"

#include <algorithm>

#include "clock/intended_length.h"
#include "core/console.h"
#include "core/files.h"
#include "mp4/check.h"
#include "output/failure_note.h"
#include "output/failure_reports.h"

namespace bundle {

namespace {

constexpr const char* kGapsAdvice =
    "Check whether the picture of the movie stands still too when it plays. If it does, get "
    "another copy and convert it again; keep this one until then.";
constexpr const char* kSilentAdvice =
    "Check whether the movie has sound when it plays. Keep the movie until you have a copy whose "
    "sound can be converted.";
constexpr const char* kShortAdvice =
    "Check whether the movie plays to its end. If it does not, get the whole movie and convert it "
    "again; keep this one until then.";

std::string was_made(const TranscodeRequest& request, const char* how) {
    return "The MP4 file " + in_quotes(request.output) + " was made, " + how;
}

/// The damage of a movie that reaches its end; usually none.
std::optional<FailureNote> damage(const TranscodeRequest& request, const EncodedMovie& made) {
    const auto& audio = made.movie.audio;
    const std::string gaps = picture_gaps(made.file.frames, frame_rate(made.movie.video));
    if (gaps.empty() || !has_other_errors(made.file.messages, audio ? audio->index : -1,
                                          audio ? audio->codec : "?")) {
        return std::nullopt;
    }
    return FailureNote{in_quotes(request.input) + ": " + gaps,
                       was_made(request, "with what can be read of the movie."),
                       made.file.messages,
                       true,
                       kGapsAdvice,
                       "The picture of the MP4 file stands still where the movie is damaged."};
}

std::string untouched(const std::string& output, bool was_there) {
    return was_there ? "The older MP4 file " + in_quotes(output) + " is still there."
                     : "There is no MP4 file " + in_quotes(output) + ".";
}

/// What a note is about. None is written beside a movie on a drive that does not respond.
Subject subject_of(const TranscodeRequest& request, Cause cause = Cause::kUnknown) {
    const bool hangs = cause == Cause::kDriveSilent || cause == Cause::kStalled;
    return {request.output, hangs ? "" : request.input};
}

}  // namespace

std::optional<FailureNote> shortcomings(const TranscodeRequest& request, const EncodedMovie& made) {
    const double promised = std::max(made.movie.duration.value_or(0),
                                     intended_length(request.input, made.file.duration));
    const std::string missing = shortfall(promised, made.file.duration);
    const std::string silent =
        made.movie.has_undecodable_audio
            ? "The MP4 file has no sound: the movie has some, but none that can be decoded."
            : "";
    if (missing.empty() && silent.empty()) {
        return damage(request, made);
    }
    const std::string both = missing + (missing.empty() || silent.empty() ? "" : " ") + silent;
    FailureNote note;
    note.happened = in_quotes(request.input) + ": " + both;
    note.last_lines = made.file.messages;
    note.is_delivered = true;
    if (missing.empty()) {
        note.untouched = was_made(request, "without sound.");
        note.advice = kSilentAdvice;
        note.headline = "The MP4 file has no sound: the movie's cannot be decoded.";
    } else {
        note.untouched = was_made(request, "with what there is of the movie.");
        note.advice = kShortAdvice;
        note.headline = "The MP4 file is shorter than the movie should be.";
    }
    return note;
}

void note_success(const TranscodeRequest& request, const std::optional<FailureNote>& shortcomings) {
    clear_note(subject_of(request), Step::kConversion);
    if (shortcomings) {
        complain("ffmpeg", shortcomings->happened);
        report_failure(subject_of(request), Step::kConversion, *shortcomings);
    }
}

void note_failure(const TranscodeRequest& request, const Failure& failure, bool was_there) {
    report_failure(subject_of(request, failure.cause), Step::kConversion,
                   failure_note(Step::kConversion, failure,
                                "The movie " + in_quotes(request.input) + " was only read. " +
                                    untouched(request.output, was_there)));
}

void note_refusal(const std::string& output, const Failure& failure) {
    const Failure why = failure_by(Cause::kNotUnderstood,
                                   "The command line was not understood: " + failure.message);
    report_failure({output, ""}, Step::kConversion,
                   failure_note(Step::kConversion, why,
                                "No movie was read. " + untouched(output, exists(output))));
}

}  // namespace bundle
