#include "ffmpeg/run_plan.h"

#include <fcntl.h>

#include <algorithm>

#include "clock/jumping_clock.h"
#include "ffmpeg/inner_subtitles.h"
#include "mp4/chapter_clip.h"
#include "mp4/check.h"
#include "process/run_ffmpeg.h"

namespace bundle {

namespace {

using Show = std::function<void(const Progress&)>;

Result<std::string> run_without_jumps(FfmpegWork& work, bool has_audio, const Show& show,
                                      const StopSignals& stop) {
    const UniqueFd file(::open(work.subject.c_str(), O_RDONLY | O_CLOEXEC));
    const auto feed = JumpingClock{has_audio}.start_feed(file);
    if (!feed) {
        return feed.failure();
    }
    work.input = feed->reader();
    work.inherited.push_back(file.get());
    return run_ffmpeg(work, show, stop);
}

Result<std::string> encode(const ConversionPlan& plan, const std::string& output,
                           const InnerSubtitles& subtitles, const Show& show,
                           const StopSignals& stop) {
    const auto scripts = subtitles.scripts();
    FfmpegWork work{arguments_of(plan, output, scripts)};
    work.subject = plan.input;
    work.inherited = scripts;
    const Show timed = [&](const Progress& progress) {
        show(scripts.empty() ? progress : timed_by_frames(progress, plan.rate));
    };
    return plan.skips_jumps ? run_without_jumps(work, plan.has_audio, timed, stop)
                            : run_ffmpeg(work, timed, stop);
}

FrameCount frame_count(const ConversionPlan& plan, double seconds, std::int64_t read) {
    return plan.fills_gaps ? FrameCount{seconds * plan.rate, read} : FrameCount{};
}

/// Checks what ffmpeg has made. If it had messages, the video is checked too: if that cannot be
/// decoded, the audio alone may be as long as the movie.
Result<EncodedFile> checked(const ConversionPlan& plan, const std::string& output,
                            const InnerSubtitles& subtitles, const std::string& messages,
                            std::int64_t frames_read) {
    const auto duration = check_mp4(output, {plan.has_audio});
    if (!duration && plan.has_audio && check_mp4(output, {})) {
        return EncodedFile{0, messages, {}, true};
    }
    if (!duration) {
        return Failure{duration.failure().message, kStatusFailed, messages};
    }
    const double video = picture_length(output);
    if (!messages.empty() && is_nearly_nothing(plan.duration, video)) {
        return Failure{"nearly nothing of the picture can be decoded", kStatusFailed, messages};
    }
    if (auto failure = subtitles.add_to(output, *duration)) {
        return *failure;
    }
    return EncodedFile{messages.empty() ? *duration : std::min(*duration, video), messages,
                       frame_count(plan, video, frames_read)};
}

}  // namespace

Result<EncodedFile> run_plan(const ConversionPlan& plan, const std::string& output,
                             const std::function<void(const Progress&)>& show,
                             const StopSignals& stop) {
    const InnerSubtitles subtitles(plan.subtitles, plan.input);
    std::int64_t frames_read = 0;
    const Show count_and_show = [&](const Progress& progress) {
        frames_read = progress.frames - progress.repeated;
        show(progress);
    };
    const auto messages = encode(plan, output, subtitles, count_and_show, stop);
    if (!messages) {
        return messages.failure();
    }
    clip_chapters(output);
    return checked(plan, output, subtitles, *messages, frames_read);
}

}  // namespace bundle
