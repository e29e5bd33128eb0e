#include "ffmpeg/encode.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <nlohmann/json.hpp>

#include "clock/jumping_clock.h"
#include "core/cause.h"
#include "core/console.h"
#include "ffmpeg/arguments.h"
#include "ffmpeg/inner_subtitles.h"
#include "movie/audible_streams.h"
#include "movie/probe.h"
#include "mp4/chapter_clip.h"
#include "mp4/check.h"
#include "process/ffmpeg_filters.h"
#include "process/progress.h"
#include "process/run_ffmpeg.h"

namespace bundle {

namespace {

/// Asks for the colour filters only where they matter, and says what comes out without them.
bool colours_can_be_converted(const TranscodeRequest& request, const Movie& movie,
                              const StopSignals& stop) {
    const Colour& colour = movie.video.colour;
    if (!needs_colour_conversion(colour) || has_colour_filters(stop)) {
        return true;
    }
    complain("ffmpeg",
             in_quotes(request.input) +
                 (is_high_dynamic_range(colour) ? " is HDR (high dynamic range)"
                                                : " has unusual colours") +
                 ", and the system's ffmpeg has no zscale and tonemap filters to convert that: the "
                 "colours stay as they are and look flat on most devices");
    return false;
}

/// Encodes one source, as often as need be.
class Encoder {
  public:
    Encoder(const TranscodeRequest& request, const nlohmann::json& probed, PrivateFile& output,
            const StopSignals& stop)
        : request_(request),
          probed_(probed),
          output_(output),
          stop_(stop),
          listening_(request.input, probed, stop) {}

    Result<EncodedMovie> encode(const Movie& movie, bool has_zscale) {
        auto made = attempt(movie, has_zscale);
        if (made || !may_fail_by_subtitles(movie, made.failure())) {
            return made;
        }
        has_subtitles_ = false;
        if (auto failure = output_.renew()) {
            return *failure;
        }
        auto without = attempt(movie, has_zscale);
        if (without) {
            complain("ffmpeg",
                     in_quotes(request_.input) +
                         ": the subtitles inside it are left out: " + made.failure().message);
        }
        return without;
    }

    /// True when the work on the movie has failed by a sound that nobody can hear.
    bool has_lost_its_sound(const Movie& movie) const {
        return listening_.found_silent(movie) && stop_.received() == 0;
    }

    /// Makes ready for the movie with the next sound, or without one.
    Result<Movie> next_movie() {
        if (auto failure = output_.renew()) {
            return *failure;
        }
        return find_movie(request_.input, probed_, listening_.silent(), stop_);
    }

  private:
    Result<EncodedMovie> attempt(const Movie& movie, bool has_zscale) {
        const InnerSubtitles subtitles(subtitles_of(movie), request_.input, movie.start, stop_);
        const auto messages = run(movie, has_zscale, subtitles);
        if (!messages) {
            return messages.failure();
        }
        clip_chapters(output_.path());
        const auto duration = check_mp4(output_.path(), {movie.audio.has_value()});
        if (!duration) {
            consider_lost_sound(movie);
            return stop_.received() != 0
                       ? stop_.failure()
                       : Failure{duration.failure().message, kStatusFailed, *messages};
        }
        const auto seen = messages->empty() ? duration : length_seen(movie);
        if (!seen) {
            return Failure{seen.failure().message, kStatusFailed, *messages};
        }
        if (auto failure = subtitles.add_to(output_.path(), *duration)) {
            return *failure;
        }
        return EncodedMovie{movie, std::min(*duration, *seen), *messages, frames_of(movie)};
    }

    /// Where a rate is asked for, a filter repeats frames, and does not say how many.
    FrameCount frames_of(const Movie& movie) const {
        if (request_.rate || has_variable_rate(movie.video)) {
            return {};
        }
        return {picture_length(output_.path()) * frame_rate(movie.video), frames_read_};
    }

    /// How long the new picture lasts, in seconds: where the old one can't be decoded, the audio
    /// alone may still be as long as the movie.
    Result<double> length_seen(const Movie& movie) const {
        const double picture = picture_length(output_.path());
        return is_nearly_nothing(movie.duration.value_or(0), picture)
                   ? Result<double>(Failure{"nearly nothing of the picture can be decoded"})
                   : picture;
    }

    /// True unless something else than the subtitles inside the movie is known to be the reason.
    bool may_fail_by_subtitles(const Movie& movie, const Failure& failure) const {
        return !subtitles_of(movie).empty() && failure.cause != Cause::kStalled &&
               !has_lost_its_sound(movie) && stop_.received() == 0 && !output_.trouble();
    }

    std::vector<TextStream> subtitles_of(const Movie& movie) const {
        return has_subtitles_ ? movie.subtitles : std::vector<TextStream>();
    }

    Result<std::string> run(const Movie& movie, bool has_zscale, const InnerSubtitles& subtitles) {
        const double rate = request_.rate ? request_.rate->value() : frame_rate(movie.video);
        const auto show = [&](const Progress& progress) {
            frames_read_ = progress.frames - progress.repeated;
            show_(subtitles.empty() ? progress : timed_by_frames(progress, rate));
        };
        FfmpegWork work = work_on(movie, has_zscale);
        subtitles.extend(work);
        return movie.has_jumping_clock ? run_without_jumps(movie, work, show)
                                       : run_ffmpeg(work, show, stop_);
    }

    Result<std::string> run_without_jumps(const Movie& movie, FfmpegWork& work,
                                          const std::function<void(const Progress&)>& show) {
        const UniqueFd file(::open(request_.input.c_str(), O_RDONLY | O_CLOEXEC));
        const auto feed = JumpingClock{movie.audio.has_value()}.start_feed(file);
        if (!feed) {
            return feed.failure();
        }
        work.input = feed->reader();
        work.inherited.push_back(file.get());
        return run_ffmpeg(work, show, stop_);
    }

    FfmpegWork work_on(const Movie& movie, bool has_zscale) {
        FfmpegWork work{encoder_arguments(request_, movie, output_.path(), has_zscale)};
        work.subject = request_.input;
        if (movie.audio) {
            work.is_useless = [&] {
                listening_.listen();
                return listening_.found_silent(movie);
            };
        }
        return work;
    }

    /// Where nothing but the sound is missing, the next one has to be one that can be heard.
    void consider_lost_sound(const Movie& movie) {
        if (check_mp4(output_.path(), {})) {
            listening_.listen();
            listening_.take_for_silent(movie);
        }
    }

    const TranscodeRequest& request_;
    const nlohmann::json& probed_;
    PrivateFile& output_;
    const StopSignals& stop_;
    Listening listening_;
    bool has_subtitles_ = true;
    std::int64_t frames_read_ = 0;  ///< by the latest run
    FurthestProgress furthest_;
    const std::function<void(const Progress&)> show_ = [this](const Progress& progress) {
        write_if_ready(STDERR_FILENO, old_progress_line(furthest_.with(progress)));
    };
};

}  // namespace

Result<EncodedMovie> encode_movie(const TranscodeRequest& request, PrivateFile& output,
                                  const StopSignals& stop) {
    const auto probed = probe_for_conversion(request.input, stop);
    if (!probed) {
        return probed.failure();
    }
    auto movie = find_movie(request.input, *probed, {}, stop);
    if (!movie) {
        return movie.failure();
    }
    const bool has_zscale = colours_can_be_converted(request, *movie, stop);
    Encoder encoder(request, *probed, output, stop);
    auto made = encoder.encode(*movie, has_zscale);
    while (!made && encoder.has_lost_its_sound(*movie)) {
        movie = encoder.next_movie();
        if (!movie) {
            return output.explained(movie.failure());
        }
        made = encoder.encode(*movie, has_zscale);
    }
    if (!made) {
        return output.explained(made.failure());
    }
    print_messages(made->messages, request.input);
    return made;
}

}  // namespace bundle
