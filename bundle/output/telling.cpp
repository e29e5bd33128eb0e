#include "output/telling.h"

#include "core/console.h"
#include "output/advice.h"
#include "output/failure_note.h"
#include "output/notice.h"

namespace bundle {

namespace {

std::string headline(Step step, const Failure& failure) {
    // The failure of the conversion has been shown.
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

void say_where(const char* tool, const Subject& subject, const Result<Left>& left) {
    if (!left) {
        complain(tool, "no file about this could be written: " + left.failure().message);
    } else if (!left->why_not_beside.empty()) {
        complain(tool, "what happened is written in " + whole_in_quotes(left->path) +
                           ", not beside " + in_quotes(subject.output) + ": " +
                           left->why_not_beside);
    }
}

}  // namespace

Report failed_report(Step step, const Failure& failure, const std::string& untouched) {
    return {failure.message,
            untouched,
            failure.details,
            false,
            std::string(words_for(failure.cause).advice),
            headline(step, failure)};
}

void tell_in_trace(const Subject& subject, Step step, const Report& report) {
    const bool is_conversion = step == Step::kConversion;
    const auto left = leave_trace(subject, step, report);
    say_where(is_conversion ? "ffmpeg" : "MP4Box", subject, left);
    if (!report.headline.empty()) {
        const bool is_named = is_conversion && !subject.source.empty();
        show_notice({subject.output, name_in(is_named ? subject.source : subject.output),
                     report.headline, left ? left->path : ""},
                    step);
    }
}

}  // namespace bundle
