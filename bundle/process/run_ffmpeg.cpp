#include "process/run_ffmpeg.h"

#include <unistd.h>

#include <csignal>
#include <cstring>
#include <utility>

#include "core/console.h"
#include "process/run.h"
#include "process/system_tools.h"

namespace bundle {

namespace {

/// No questions, errors only, and four progress reports a second on standard output.
std::vector<std::string> with_common_options(const std::vector<std::string>& arguments) {
    std::vector<std::string> all{
        "-nostdin", "-hide_banner",  "-loglevel", "error", "-progress",
        "pipe:1",   "-stats_period", "0.25",      "-y",    "-protocol_whitelist",
        "file,pipe"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

constexpr int kKilled = 128;

bool is_killed(int status) {
    return status > kKilled && status < kKilled + NSIG;
}

Cause cause_of(int status) {
    return is_killed(status) ? Cause::kEnded : Cause::kUnknown;
}

/// An exit status in words.
std::string in_words(int status) {
    if (!is_killed(status)) {
        return "the system's ffmpeg failed with status " + std::to_string(status);
    }
    return "the system's ffmpeg was ended from outside by signal " +
           std::to_string(status - kKilled) + " (" + ::strsignal(status - kKilled) + ")";
}

std::string on(const std::string& subject) {
    return subject.empty() ? "" : " on " + in_quotes(subject);
}

}  // namespace

Result<std::string> run_ffmpeg(const FfmpegWork& work,
                               const std::function<void(const Progress&)>& show,
                               const StopSignals& stop) {
    const auto program = find_ffmpeg();
    if (!program) {
        return program.failure();
    }
    Progress latest;
    ProgressReader reader([&](const Progress& progress) {
        latest = progress;
        show(latest);
    });
    MessageTail messages;
    const Listener listener{[&](std::string_view piece) { reader.add(piece); },
                            [&](std::string_view piece) { messages.add(piece); },
                            [&] { show(latest); }};
    const auto status = run(
        {*program, with_common_options(work.arguments), work.alias, work.input, {}, work.inherited},
        listener, stop);
    if (!status) {
        Failure failure = status.failure();
        failure.message += on(work.subject);
        return stop.received() != 0 ? stop.failure() : failure;
    }
    std::string text = messages.text();
    if (*status != 0) {
        // When both are stopped, ffmpeg may end before the signal is seen here.
        return stop.received() != 0 ? stop.failure()
                                    : Failure{in_words(*status) + on(work.subject), kStatusFailed,
                                              std::move(text), cause_of(*status)};
    }
    return text;
}

void print_messages(const std::string& messages, const std::string& subject) {
    if (!messages.empty()) {
        write_patiently(STDERR_FILENO,
                        "the system's ffmpeg" + on(subject) + ": " + printable(messages) + "\n");
    }
}

}  // namespace bundle
