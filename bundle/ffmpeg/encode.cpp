#include "ffmpeg/encode.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/cause.h"
#include "core/console.h"
#include "movie/audible_streams.h"
#include "movie/probe.h"
#include "process/ffmpeg_filters.h"
#include "process/progress.h"
#include "process/run_ffmpeg.h"

namespace bundle {

namespace {

/// Asks the system's ffmpeg, but only for what the movie needs: each question starts it.
SystemFilters system_filters_for(const Movie& movie, const StopSignals& stop) {
    const auto& subtitles = movie.subtitles;
    const bool has_teletext = std::any_of(subtitles.begin(), subtitles.end(), is_teletext);
    return {!movie.video.needs_colour_conversion || has_colour_filters(stop),
            !has_teletext || has_teletext_decoder(stop)};
}

/// Encodes one movie, with a new plan after each run that has shown the need for one.
class Encoder {
  public:
    Encoder(const TranscodeRequest& request, const nlohmann::json& probed, PrivateFile& output,
            const StopSignals& stop)
        : request_(request), probed_(probed), output_(output), stop_(stop) {}

    Result<EncodedMovie> encode(Movie movie) {
        const SystemFilters system = system_filters_for(movie, stop_);
        ConversionPlan plan = plan_conversion(request_, movie, system);
        say(plan.notes);
        while (true) {
            const auto made = run_plan(plan, output_.path(), show_, stop_);
            const bool is_silent = stop_.received() == 0 && has_silent_audio(movie, made);
            if (stop_.received() != 0) {
                return stop_.failure();
            }
            if (!is_silent && !may_fail_by_subtitles(plan, made)) {
                return made ? outcome(movie, *made) : made.failure();
            }
            auto next = is_silent ? with_other_audio() : without_subtitles(movie, made.failure());
            if (!next) {
                return next.failure();
            }
            movie = std::move(*next);
            plan = plan_conversion(request_, movie, system);
        }
    }

  private:
    void say(const std::vector<std::string>& notes) {
        for (const std::string& note : notes) {
            complain("ffmpeg", note);
        }
    }

    Result<EncodedMovie> outcome(const Movie& movie, const EncodedFile& made) {
        if (!subtitle_trouble_.empty()) {
            complain("ffmpeg", in_quotes(request_.input) +
                                   ": the subtitles inside it are left out: " + subtitle_trouble_);
        }
        return EncodedMovie{movie, made};
    }

    /// True when the movie or its decoders may be the reason for a failed run.
    bool may_be_the_movie(const Failure& failure) const {
        return failure.cause != Cause::kStalled && !output_.trouble();
    }

    bool has_silent_audio(const Movie& movie, const Result<EncodedFile>& made) {
        const bool is_suspect =
            made ? made->lacks_audio || !made->messages.empty() : may_be_the_movie(made.failure());
        if (!movie.audio || !is_suspect) {
            return false;
        }
        if (!silent_) {
            silent_ = silent_streams(request_.input, probed_, stop_);
        }
        if (made && made->lacks_audio) {
            silent_->insert(movie.audio->index);
        }
        return silent_->contains(movie.audio->index);
    }

    bool may_fail_by_subtitles(const ConversionPlan& plan, const Result<EncodedFile>& made) const {
        return !made && !plan.subtitles.empty() && may_be_the_movie(made.failure());
    }

    Result<Movie> with_other_audio() {
        if (auto failure = output_.renew()) {
            return *failure;
        }
        auto movie = find_movie_to_convert(request_.input, probed_, *silent_, stop_);
        if (movie && !subtitle_trouble_.empty()) {
            movie->subtitles.clear();
        }
        return movie;
    }

    Result<Movie> without_subtitles(Movie movie, const Failure& failure) {
        subtitle_trouble_ = failure.message;
        if (auto failed = output_.renew()) {
            return *failed;
        }
        movie.subtitles.clear();
        return movie;
    }

    const TranscodeRequest& request_;
    const nlohmann::json& probed_;
    PrivateFile& output_;
    const StopSignals& stop_;
    std::optional<std::set<int>> silent_;  ///< audio streams; empty: not looked at yet
    std::string subtitle_trouble_;         ///< why they are left out
    FurthestProgress furthest_;
    const std::function<void(const Progress&)> show_ = [this](const Progress& progress) {
        write_if_ready(STDERR_FILENO, old_progress_line(furthest_.with(progress)));
    };
};

}  // namespace

Result<EncodedMovie> encode_movie(const TranscodeRequest& request, const nlohmann::json& probed,
                                  const Movie& movie, PrivateFile& output,
                                  const StopSignals& stop) {
    auto made = Encoder(request, probed, output, stop).encode(movie);
    if (!made) {
        return output.explained(made.failure());
    }
    print_messages(made->file.messages, request.input);
    return made;
}

}  // namespace bundle
