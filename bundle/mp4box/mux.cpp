#include "mp4box/mux.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/console.h"
#include "core/file_identity.h"
#include "core/files.h"
#include "core/formatted.h"
#include "core/json_reading.h"
#include "movie/movie_tags.h"
#include "mp4/check.h"
#include "output/failure_note.h"
#include "output/failure_reports.h"
#include "output/private_file.h"
#include "process/ffprobe.h"
#include "process/progress.h"
#include "process/run_ffmpeg.h"
#include "subtitles/ass_script.h"
#include "subtitles/placement.h"
#include "subtitles/subtitle_file.h"

namespace bundle {

namespace {

// "killall ffmpeg", by which the program stops a conversion, has to spare this tool's work.
constexpr const char* kProcessName = "mp4mux";
constexpr std::string_view kHandlerSuffix = ":hdlr=sbtl";

/// Copies the MP4 file and the subtitles into `output`. The progress is counted in bytes.
MaybeFailure mux(const SubtitleRequest& request, const Mp4Facts& facts,
                 const std::vector<Cue>& cues, const std::string& output, const StopSignals& stop) {
    const auto input = nameless_file(ass_script(cues));
    if (!input) {
        return input.failure();
    }
    const std::int64_t whole = std::max<std::int64_t>(file_size(request.mp4), 1);
    const auto show = [whole](const Progress& progress) {
        const std::int64_t percent = progress.bytes.value_or(0) * 100 / whole;
        write_if_ready(STDOUT_FILENO, file_progress_line(percent));
    };
    show({});
    const FfmpegWork work{subtitle_arguments(request.mp4, facts, output), kProcessName,
                          input->get()};
    const auto messages = run_ffmpeg(work, show, stop);
    if (!messages) {
        return messages.failure();
    }
    print_messages(*messages);
    return std::nullopt;
}

Subject subject_of(const SubtitleRequest& request) {
    return {request.mp4, request.subtitles};
}

MaybeFailure check_request(const SubtitleRequest& request) {
    if (same_file(request.subtitles, request.mp4)) {
        return Failure{"the MP4 file and the subtitles are the same file"};
    }
    if (conversion_failed(subject_of(request))) {
        return failure_by(Cause::kNotConverted, exists(request.mp4)
                                                    ? "the movie was not converted, and what lies "
                                                      "there is an older MP4 file"
                                                    : "the movie was not converted");
    }
    return std::nullopt;
}

MaybeFailure check_facts(const Mp4Facts& facts) {
    return facts.is_mp4 && facts.width > 0
               ? MaybeFailure()
               : failure_by(Cause::kNotMp4, "the file is not an MP4 file");
}

/// Puts the text where players expect it and checks that the MP4 file is complete.
MaybeFailure place_and_check(const std::string& mp4, const Mp4Facts& facts,
                             const std::string& copied_from) {
    const TextPlace place = subtitle_place(facts.width, facts.height);
    if (auto failure = place_text_track_in(mp4, place, copied_from)) {
        return failure;
    }
    const ExpectedStreams streams{facts.has_audio, facts.subtitle_tracks + 1};
    const auto duration = check_mp4(mp4, streams);
    return duration ? MaybeFailure() : duration.failure();
}

std::string what_was_left(const SubtitleRequest& request) {
    const std::string mp4 = in_quotes(request.mp4);
    return (exists(request.mp4) ? "The MP4 file " + mp4 + " is there, without these subtitles. "
                                : "There is no MP4 file " + mp4 + ". ") +
           "The subtitle file " + in_quotes(request.subtitles) + " is as it was.";
}

/// True when another run has replaced the MP4 file and added subtitles to it.
bool is_done_by_another(const SubtitleRequest& request, const Failure& failure,
                        const StopSignals& stop) {
    if (failure.cause != Cause::kReplaced) {
        return false;
    }
    const auto probed = probe_entries(request.mp4, kMp4Entries, stop);
    return probed && !mp4_facts(*probed).own_tracks.empty();
}

MaybeFailure add(const SubtitleRequest& request, const StopSignals& stop) {
    if (auto failure = check_request(request)) {
        return failure;
    }
    const auto read = identity_of(request.mp4);
    auto output = PrivateFile::create(request.mp4);
    if (!output) {
        return output.failure();
    }
    output->replace_only(read);
    const auto probed = probe_entries(request.mp4, kMp4Entries, stop);
    if (!probed) {
        return probed.failure();
    }
    const Mp4Facts facts = mp4_facts(*probed);
    if (auto failure = check_facts(facts)) {
        return failure;
    }
    const auto cues = read_subtitles(request.subtitles);
    if (!cues) {
        return cues.failure();
    }
    auto failure = mux(request, facts, *cues, output->path(), stop);
    failure = failure ? failure : place_and_check(output->path(), facts, request.mp4);
    return failure ? output->explained(*failure) : output->publish_whole(stop);
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

const char* const kMp4Entries =
    "format=format_name:format_tags=major_brand,creation_time:stream=index,codec_type,width,height:"
    "stream_tags=handler_name:stream_disposition=attached_pic";

Mp4Facts mp4_facts(const nlohmann::json& probed) {
    const auto& format = member(probed, "format");
    const auto& tags = member(format, "tags");
    Mp4Facts facts;
    facts.brand = text(tags, "major_brand");
    facts.recorded = recording_time(text(tags, "creation_time"));
    facts.is_mp4 = text(format, "format_name").find("mp4") != std::string::npos &&
                   !facts.brand.starts_with("qt");
    for (const auto& stream : member(probed, "streams")) {
        const std::string kind = text(stream, "codec_type");
        if (kind == "subtitle" && text(member(stream, "tags"), "handler_name") == kTrackName) {
            facts.own_tracks.push_back(whole(stream, "index"));
        } else if (kind == "subtitle") {
            ++facts.subtitle_tracks;
        } else if (kind == "audio") {
            facts.has_audio = true;
        } else if (kind == "video" && facts.width == 0 &&
                   whole(member(stream, "disposition"), "attached_pic") == 0) {
            facts.width = whole(stream, "width");
            facts.height = whole(stream, "height");
        }
    }
    return facts;
}

std::vector<std::string> subtitle_arguments(const std::string& mp4, const Mp4Facts& facts,
                                            const std::string& output) {
    const std::string track = ":s:" + std::to_string(facts.subtitle_tracks);
    const std::string format = facts.brand.starts_with("M4V") ? "ipod" : "mp4";
    // The muxer makes the data track with the chapters again.
    std::vector<std::string> arguments{"-i",     file_url(mp4), "-f", "ass",  "-i",
                                       "pipe:0", "-map",        "0",  "-map", "-0:d"};
    const auto append = [&arguments](std::initializer_list<std::string> more) {
        arguments.insert(arguments.end(), more);
    };
    for (const int index : facts.own_tracks) {
        append({"-map", "-0:" + std::to_string(index)});
    }
    append({"-map", "1:0", "-c", "copy", "-c" + track, "mov_text"});
    // The default of microseconds limits the gap between two cues.
    append({"-time_base" + track, "1/1000"});
    append({"-metadata:s" + track, formatted("handler_name=%s", kTrackName)});
    // The only tag that ffmpeg does not copy by itself.
    if (!facts.recorded.empty()) {
        append({"-metadata", "creation_time=" + facts.recorded});
    }
    // Only one track may be enabled.
    append(
        {"-disposition:s", "0", "-disposition" + track, "default", "-f", format, file_url(output)});
    return arguments;
}

MaybeFailure add_subtitles(const SubtitleRequest& request, const StopSignals& stop) {
    if (const auto reason = add(request, stop)) {
        auto failure = about("cannot add the subtitles " + in_quotes(request.subtitles) + " to " +
                                 in_quotes(request.mp4),
                             *reason);
        if (!is_done_by_another(request, failure, stop)) {
            report_failure(subject_of(request), Step::kSubtitles,
                           failure_note(Step::kSubtitles, failure, what_was_left(request)));
        }
        return failure;
    }
    clear_note(subject_of(request), Step::kSubtitles);
    write_if_ready(STDOUT_FILENO, file_progress_line(100));
    return std::nullopt;
}

}  // namespace bundle
