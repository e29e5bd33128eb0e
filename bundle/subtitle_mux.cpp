#include "subtitle_mux.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "console.h"
#include "ffmpeg_run.h"
#include "ffprobe.h"
#include "files.h"
#include "private_file.h"
#include "progress.h"
#include "subtitle_text.h"

namespace bundle {

namespace {

// "killall ffmpeg", by which the program stops a conversion, has to spare this tool's work.
constexpr const char* kProcessName = "mp4mux";
constexpr std::string_view kHandlerSuffix = ":hdlr=sbtl";

/// Copies the film and the subtitles into `output`; the share of the film's bytes that has been
/// written is the progress.
MaybeFailure mux(const SubtitleRequest& request, const Container& container,
                 const std::string& text, const std::string& output, const StopSignals& stop) {
    const auto input = nameless_file(text);
    if (!input) {
        return input.failure();
    }
    const std::int64_t whole = std::max<std::int64_t>(file_size(request.film), 1);
    const auto show = [whole](const Progress& progress) {
        const std::int64_t percent = progress.bytes.value_or(0) * 100 / whole;
        write_if_ready(STDOUT_FILENO, file_progress_line(percent));
    };
    show({});
    const FfmpegWork work{subtitle_arguments(request.film, container, output), kProcessName,
                          input->get()};
    return run_ffmpeg(work, show, stop);
}

}  // namespace

Result<SubtitleRequest> parse_subtitle_request(const std::vector<std::string>& arguments) {
    if (arguments.size() != 3 || arguments[0] != "-add" ||
        !arguments[1].ends_with(kHandlerSuffix) || arguments[2].empty()) {
        return Failure{"usage: MP4Box -add FILE.srt:hdlr=sbtl OUT.mp4", kStatusUsage};
    }
    const std::size_t length = arguments[1].size() - kHandlerSuffix.size();
    return SubtitleRequest{arguments[1].substr(0, length), arguments[2]};
}

const char* const kContainerEntries = "format_tags=major_brand:stream=codec_type";

Container container_from(const nlohmann::json& probed) {
    Container container;
    container.brand = probed.value(nlohmann::json::json_pointer("/format/tags/major_brand"), "");
    for (const auto& stream : probed.value("streams", nlohmann::json::array())) {
        if (stream.value("codec_type", "") == "subtitle") {
            ++container.subtitle_tracks;
        }
    }
    return container;
}

std::vector<std::string> subtitle_arguments(const std::string& film, const Container& container,
                                            const std::string& output) {
    const std::string track = ":s:" + std::to_string(container.subtitle_tracks);
    const std::string format = container.brand.starts_with("M4V") ? "ipod" : "mp4";
    // Data tracks are left to the muxer: it makes the one for the chapters again from their list.
    return {"-i",
            file_url(film),
            "-f",
            "srt",
            "-i",
            "pipe:0",
            "-map",
            "0",
            "-map",
            "-0:d",
            "-map",
            "1:0",
            "-c",
            "copy",
            "-c" + track,
            "mov_text",
            "-disposition" + track,
            "default",
            "-f",
            format,
            file_url(output)};
}

MaybeFailure add_subtitles(const SubtitleRequest& request, const StopSignals& stop) {
    if (same_file(request.subtitles, request.film)) {
        return Failure{"the film and the subtitles are the same file"};
    }
    auto output = PrivateFile::create(request.film);
    if (!output) {
        return output.failure();
    }
    const auto text = read_subtitles(request.subtitles);
    if (!text) {
        return text.failure();
    }
    const auto probed = probe_entries(request.film, kContainerEntries, stop);
    if (!probed) {
        return probed.failure();
    }
    if (auto failure = mux(request, container_from(*probed), *text, output->path(), stop)) {
        return failure;
    }
    if (auto failure = output->publish_whole(stop)) {
        return failure;
    }
    write_if_ready(STDOUT_FILENO, file_progress_line(100));
    return std::nullopt;
}

}  // namespace bundle
