#include "ffmpeg/inner_subtitles.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/console.h"
#include "core/files.h"
#include "core/json_reading.h"
#include "core/numbers.h"
#include "mp4/check.h"
#include "mp4/kept_index.h"
#include "process/ffmpeg_filters.h"
#include "process/ffprobe.h"
#include "subtitles/ass_reading.h"
#include "subtitles/cue_track.h"
#include "subtitles/script_text.h"
#include "subtitles/track_adding.h"

namespace bundle {

namespace {

constexpr std::int64_t kLargestScript = std::int64_t{64} << 20;
constexpr const char* kUsualName = "SubtitleHandler";

void append(std::vector<std::string>& arguments, std::initializer_list<std::string> more) {
    arguments.insert(arguments.end(), more);
}

void append(std::vector<std::string>& arguments, const std::vector<std::string>& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
}

bool is_of_mp4(const TextStream& stream) {
    return stream.codec == "mov_text";
}

/// Where the movie starts for ffmpeg when it follows only the simplest edits of an MP4 file. The
/// others it applies to text at the wrong times.
std::optional<double> start_without_edits(const std::string& path, const StopSignals& stop) {
    const auto answer = probe_entries(path, "format=start_time", stop, {"-advanced_editlist", "0"});
    return answer ? parse_decimal(text(member(*answer, "format"), "start_time")) : std::nullopt;
}

/// The whole file.
Result<ReadableText> read_script(int file) {
    struct stat status {};
    if (::fstat(file, &status) != 0 || status.st_size > kLargestScript) {
        return Failure{"there is too much of it"};
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = ::pread(file, bytes.data(), bytes.size(), 0);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return readable_text(bytes);
}

/// Only what is within the movie; all times are rounded to hundredths later.
std::vector<Cue> within(std::vector<Cue> cues, std::int64_t end_ms) {
    std::erase_if(cues, [end_ms](const Cue& cue) {
        return cue.start_ms >= end_ms || (cue.end_ms <= 0 && cue.start_ms < 0);
    });
    for (Cue& cue : cues) {
        cue.start_ms = std::max<std::int64_t>(cue.start_ms, 0);
        cue.end_ms = std::min(cue.end_ms, end_ms);
    }
    return cues;
}

/// What moves is a row of cues with the same text.
std::vector<Cue> joined(const std::vector<Cue>& cues) {
    std::vector<Cue> result;
    for (const Cue& cue : cues) {
        if (!result.empty() && result.back().end_ms == cue.start_ms &&
            result.back().text == cue.text) {
            result.back().end_ms = cue.end_ms;
        } else {
            result.push_back(cue);
        }
    }
    return result;
}

std::string name_of(const TextStream& stream) {
    const bool is_taken = stream.title.empty() || stream.title.starts_with(kTrackName);
    return is_taken ? kUsualName : stream.title;
}

/// Adds the tracks, and looks whether the file is whole.
MaybeFailure added(const std::string& path, const std::vector<TextTrack>& tracks) {
    if (auto failure = add_text_tracks(path, tracks)) {
        return failure;
    }
    const auto whole = check_mp4(path, {false, static_cast<int>(tracks.size())});
    return whole ? MaybeFailure() : whole.failure();
}

}  // namespace

InnerSubtitles::InnerSubtitles(std::vector<TextStream> streams, std::string path, double start,
                               const StopSignals& stop)
    : path_(std::move(path)) {
    const bool has_teletext = std::any_of(streams.begin(), streams.end(), is_teletext);
    if (has_teletext && !has_teletext_decoder(stop)) {
        std::erase_if(streams, is_teletext);
        complain("ffmpeg", in_quotes(path_) +
                               " has subtitles in teletext, which the system's ffmpeg can't read: "
                               "they are left out");
    }
    for (TextStream& stream : streams) {
        auto script = nameless_file("");
        if (!script) {
            complain("ffmpeg", in_quotes(path_) + ": subtitles inside it are left out: " +
                                   script.failure().message);
            return;
        }
        scripts_.push_back(std::move(*script));
        streams_.push_back(std::move(stream));
    }
    if (std::any_of(streams_.begin(), streams_.end(), is_of_mp4)) {
        second_offset_ = start_without_edits(path_, stop).value_or(start) - start;
    }
}

void InnerSubtitles::extend(FfmpegWork& work) const {
    if (streams_.empty()) {
        return;
    }
    auto& arguments = work.arguments;
    const auto behind_input = std::find(arguments.begin(), arguments.end(), "-i") + 2;
    const auto more = second_offset_ ? second_input() : stream_arguments();
    arguments.insert(second_offset_ ? behind_input : arguments.begin(), more.begin(), more.end());
    append(arguments, output_arguments());
    for (const UniqueFd& script : scripts_) {
        work.inherited.push_back(script.get());
    }
}

std::vector<std::string> InnerSubtitles::stream_arguments() const {
    std::vector<std::string> arguments;
    for (const TextStream& stream : streams_) {
        const std::string index = std::string(":").append(std::to_string(stream.index));
        // Text in old encodings goes through and is recognised afterwards.
        append(arguments, {"-sub_charenc_mode" + index, "ignore"});
        if (is_teletext(stream)) {
            append(arguments, {"-txt_format" + index, "text", "-txt_page" + index, "subtitle"});
            append(arguments, {"-fix_sub_duration" + index});
        }
    }
    return arguments;
}

std::vector<std::string> InnerSubtitles::second_input() const {
    auto arguments = stream_arguments();
    append(arguments, {"-protocol_whitelist", "file,pipe", "-advanced_editlist", "0"});
    append(arguments, {"-itsoffset", std::to_string(*second_offset_), "-i", file_url(path_)});
    return arguments;
}

std::vector<std::string> InnerSubtitles::output_arguments() const {
    const std::string input = second_offset_ ? "1:" : "0:";
    std::vector<std::string> arguments;
    for (std::size_t at = 0; at < streams_.size(); ++at) {
        append(arguments, {"-map", input + std::to_string(streams_[at].index), "-c:s", "ass"});
        append(arguments, {"-avoid_negative_ts", "disabled", "-ignore_readorder", "1"});
        append(arguments, {"-f", "ass", "pipe:" + std::to_string(scripts_[at].get())});
    }
    return arguments;
}

std::optional<TextTrack> InnerSubtitles::track(std::size_t at, double duration) const {
    const TextStream& stream = streams_[at];
    const auto say = [&](const std::string& what) {
        complain("ffmpeg",
                 in_quotes(path_) + ": subtitle stream " + std::to_string(stream.index) + what);
    };
    const auto script = read_script(scripts_[at].get());
    if (!script) {
        say(" is left out: " + script.failure().message);
        return std::nullopt;
    }
    if (script->damaged_lines > 0) {
        say(" is damaged: " + std::to_string(script->damaged_lines) + " of its lines are left out");
    }
    auto track = track_of(stream, script->text, duration);
    return track.cues.empty() ? std::nullopt : std::optional(std::move(track));
}

MaybeFailure InnerSubtitles::add_to(const std::string& path, double duration) const {
    std::vector<TextTrack> tracks;
    for (std::size_t at = 0; at < streams_.size(); ++at) {
        if (auto made = track(at, duration)) {
            tracks.push_back(std::move(*made));
        }
    }
    if (tracks.empty()) {
        return std::nullopt;
    }
    const auto kept = keep_index(path);
    if (!kept) {
        return Failure{"the MP4 file has no index"};
    }
    auto failure = added(path, tracks);
    if (!failure) {
        return std::nullopt;
    }
    if (!put_back(path, *kept)) {
        return failure;
    }
    complain("ffmpeg",
             in_quotes(path_) + ": the subtitles inside it are left out: " + failure->message);
    return std::nullopt;
}

TextTrack track_of(const TextStream& stream, std::string_view script, double duration) {
    const bool has_comments = stream.codec == "ass" || stream.codec == "ssa";
    // Downwards, to what the track's hundredths of a second can express.
    const std::int64_t end_ms = std::llround(std::floor(duration * 100)) * 10;
    auto cues = joined(one_at_a_time(within(read_ass(script, has_comments), end_ms)));
    return {within(std::move(cues), end_ms), stream.language, name_of(stream), stream.is_default,
            stream.is_forced};
}

Progress timed_by_frames(Progress progress, double frames_per_second) {
    if (frames_per_second > 0) {
        const double seconds = static_cast<double>(progress.frames) / frames_per_second;
        progress.microseconds = std::llround(seconds * 1e6);
    }
    return progress;
}

}  // namespace bundle
