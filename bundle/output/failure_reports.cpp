#include "output/failure_reports.h"

#include "core/console.h"
#include "output/advice.h"
#include "output/failure_note.h"
#include "output/notice.h"

namespace bundle {

namespace {

std::string headline(Step step, const Failure& failure) {
    // The desktop has shown the failed conversion.
    if (failure.cause == Cause::kNotConverted) {
        return {};
    }
    const std::string what =
        step == Step::kConversion ? "It was not converted: " : "The subtitles were not added: ";
    return what + std::string(words_for(failure.cause).reason) + ".";
}

std::string name_in(const std::string& path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

void say_where(const char* tool, const Subject& subject, const Result<WrittenNote>& written) {
    if (!written) {
        complain(tool, "no note about this could be written: " + written.failure().message);
    } else if (!written->why_not_beside.empty()) {
        complain(tool, "what happened is written in " + whole_in_quotes(written->path) +
                           ", not beside " + in_quotes(subject.output) + ": " +
                           written->why_not_beside);
    }
}

}  // namespace

FailureNote failure_note(Step step, const Failure& failure, const std::string& untouched) {
    return {failure.message,
            untouched,
            failure.details,
            false,
            std::string(words_for(failure.cause).advice),
            headline(step, failure)};
}

void report_failure(const Subject& subject, Step step, const FailureNote& note) {
    const bool is_conversion = step == Step::kConversion;
    const auto written = leave_note(subject, step, note);
    say_where(is_conversion ? "ffmpeg" : "MP4Box", subject, written);
    if (!note.headline.empty()) {
        const bool is_named = is_conversion && !subject.source.empty();
        show_notice({subject.output, name_in(is_named ? subject.source : subject.output),
                     note.headline, written ? written->path : ""},
                    step);
    }
}

}  // namespace bundle
