// The bundle's ffmpeg: the old command lines for reporting on a movie and converting it, done by
// the system's ffmpeg.

#include <unistd.h>

#include <csignal>

#include "core/stop_signals.h"
#include "core/tool_main.h"
#include "ffmpeg/outcome.h"
#include "ffmpeg/transcode.h"
#include "protocol/tool_output.h"

namespace {

bundle::MaybeFailure ffmpeg(const std::vector<std::string>& arguments,
                            const bundle::StopSignals& stop) {
    if (arguments.size() == 2 && arguments[0] == "-i") {
        return bundle::report_movie(arguments[1], stop);
    }
    const auto request = bundle::parse_transcode(arguments);
    if (request) {
        return bundle::transcode(*request, stop);
    }
    if (const auto output = bundle::output_of(arguments)) {
        bundle::note_refusal(*output, request.failure());
    }
    return request.failure();
}

}  // namespace

int main(int count, char** arguments) {
    // Without the program nobody waits for the result.
    bundle::end_with_parent(::getppid());
    const bundle::StopSignals stop({SIGTERM, SIGINT, SIGHUP});
    return bundle::tool_main(
        tool_output::kFFmpeg, count, arguments,
        [&stop](const std::vector<std::string>& words) { return ffmpeg(words, stop); });
}
