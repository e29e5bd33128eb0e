#include "ffmpeg/inner_subtitles.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/console.h"
#include "core/files.h"
#include "mp4/check.h"
#include "mp4/kept_index.h"
#include "subtitles/ass_reading.h"
#include "subtitles/cue_track.h"
#include "subtitles/script_text.h"
#include "subtitles/track_adding.h"

namespace bundle {

namespace {

constexpr std::int64_t kLargestScript = std::int64_t{64} << 20;
constexpr const char* kUsualName = "SubtitleHandler";

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

/// The cues within the movie; their times are rounded to hundredths later.
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

/// Text that moves is stored as successive cues with the same text, and becomes one cue.
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

/// `kTrackName` marks the tracks that MP4Box makes.
std::string name_of(const TextStream& stream) {
    const bool is_taken = stream.title.empty() || stream.title.starts_with(kTrackName);
    return is_taken ? kUsualName : stream.title;
}

/// Adds the tracks and checks the file.
MaybeFailure add_tracks(const std::string& path, const std::vector<TextTrack>& tracks) {
    if (auto failure = add_text_tracks(path, tracks)) {
        return failure;
    }
    const auto whole = check_mp4(path, {false, static_cast<int>(tracks.size())});
    return whole ? MaybeFailure() : whole.failure();
}

}  // namespace

InnerSubtitles::InnerSubtitles(std::vector<TextStream> streams, std::string path)
    : streams_(std::move(streams)), path_(std::move(path)) {
    for (std::size_t at = 0; at < streams_.size(); ++at) {
        auto script = nameless_file("");
        if (!script) {
            complain("ffmpeg", in_quotes(path_) + ": subtitles inside it are left out: " +
                                   script.failure().message);
            streams_.resize(at);
            return;
        }
        scripts_.push_back(std::move(*script));
    }
}

std::vector<int> InnerSubtitles::scripts() const {
    std::vector<int> descriptors;
    for (const UniqueFd& script : scripts_) {
        descriptors.push_back(script.get());
    }
    return descriptors;
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
    auto failure = add_tracks(path, tracks);
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
    // The track counts in hundredths of a second.
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
