// The bundle's MP4Box: the old command line for adding subtitles to an MP4 file, done by the
// system's ffmpeg.

#include <csignal>

#include "core/stop_signals.h"
#include "core/tool_main.h"
#include "mp4box/mux.h"
#include "protocol/tool_output.h"

int main(int count, char** arguments) {
    // The MP4 file is finished even when the program that asked for it is gone.
    const bundle::StopSignals stop({SIGTERM, SIGINT}, {SIGHUP});
    return bundle::tool_main(
        tool_output::kMP4Box, count, arguments, [&stop](const std::vector<std::string>& words) {
            const auto request = bundle::parse_subtitle_request(words);
            return request ? bundle::add_subtitles(*request, stop) : request.failure();
        });
}
