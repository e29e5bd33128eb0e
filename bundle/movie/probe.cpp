#include "movie/probe.h"

#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "clock/jumping_clock.h"
#include "clock/matroska_end.h"
#include "clock/packet_ends.h"
#include "clock/stream_clock.h"
#include "core/console.h"
#include "core/json_reading.h"
#include "movie/header_duration.h"
#include "movie/main_shape.h"
#include "movie/packet_times.h"
#include "movie/probe_memory.h"
#include "movie/read_limits.h"
#include "movie/summed_length.h"
#include "process/ffprobe.h"
#include "process/run.h"
#include "process/source_check.h"

namespace bundle {

namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

// Headers are inexact.
constexpr double kToleratedSeconds = 2;

Words joined(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// Looks for a second packet, through the whole file if need be.
Result<bool> is_one_frame(const std::string& path, const InputOptions& options, int index,
                          const StopSignals& stop) {
    const Words first_two{"-select_streams", std::to_string(index), "-read_intervals", "%+#2"};
    const auto answer =
        probe_entries(path, "packet=stream_index", stop, joined(options, first_two));
    if (!answer) {
        return answer.failure();
    }
    return member(*answer, "packets").size() < 2;
}

/// The movie without streams that turn out to be a single picture.
Result<Movie> moving_movie(const std::string& path, const json& probed, std::set<int> unusable,
                           const StopSignals& stop) {
    while (true) {
        auto movie = movie_from(probed, unusable);
        if (!movie) {
            return about(in_quotes(path) + " is not a movie", movie.failure());
        }
        if (!movie->video.may_be_one_frame) {
            return movie;
        }
        const auto one_frame = is_one_frame(path, movie->input_options, movie->video.index, stop);
        if (!one_frame) {
            return one_frame.failure();
        }
        if (!*one_frame) {
            return movie;
        }
        unusable.insert(movie->video.index);
    }
}

/// The duration by the packets, or by the header if the file ends long before that: then it was
/// truncated.
std::optional<double> measured_duration(const std::string& path, const Movie& movie,
                                        const StopSignals& stop) {
    std::set<int> streams{movie.video.index};
    if (movie.audio) {
        streams.insert(movie.audio->index);
    }
    const auto ends = packet_ends(path, streams, movie.input_options, stop);
    if (!ends) {
        return movie.duration;
    }
    if (movie.duration) {
        const double stated = length_by_header(movie, ends->any);
        if (!ends->wanted || ends->any - movie.start < stated - kToleratedSeconds) {
            return stated;
        }
    }
    const double duration = ends->wanted.value_or(ends->any) - movie.start;
    return duration > 0 ? std::optional(duration) : movie.duration;
}

/// The JSON without all but two packets of each stream: it matters only whether a stream has none,
/// one or more.
json without_redundant_packets(json probed) {
    std::map<int, int> seen;
    json kept = json::array();
    for (const json& packet : member(probed, "packets")) {
        if (++seen[whole(packet, "stream_index")] <= 2) {
            kept.push_back(packet);
        }
    }
    probed["packets"] = std::move(kept);
    return probed;
}

Result<json> sample_of(const std::string& path, const InputOptions& options, const char* interval,
                       std::int64_t most_read, const StopSignals& stop) {
    return probe_entries(path, kMovieEntries, stop, joined(options, {"-read_intervals", interval}),
                         most_read);
}

/// A sample of the beginning, a short one if a longer one means reading too much.
Result<json> sample(const std::string& path, const InputOptions& options, const StopSignals& stop) {
    auto probed = sample_of(path, options, kSample, kMostReadForReport, stop);
    if (probed || probed.failure().status != kStatusReadTooMuch) {
        return probed;
    }
    if (looks_blank(path)) {
        return Failure{in_quotes(path) + " is not a movie: it holds nothing but zeros"};
    }
    return sample_of(path, options, kShortSample, kMostReadForShortSample, stop);
}

/// The JSON with what follows from its packets, and with the input options.
Result<json> completed(Result<json> probed, const InputOptions& options) {
    if (probed) {
        mark_streams(*probed);
        keep_input_options(*probed, options);
    }
    return probed;
}

Result<json> look_for_late_audio(const std::string& path, const InputOptions& options,
                                 const StopSignals& stop) {
    const InputOptions far = look_far(options);
    return completed(sample_of(path, far, kFarSample, kMostReadForFarLook, stop), far);
}

Result<json> probe(const std::string& path, const StopSignals& stop) {
    const InputOptions options = options_by_head(read_head(path));
    auto probed = completed(sample(path, options, stop), options);
    if (probed && sound_may_begin_later(*probed)) {
        if (auto farther = look_for_late_audio(path, options, stop)) {
            probed = std::move(farther);
        }
    }
    if (probed) {
        set_main_shape(*probed, path, stop);
        set_summed_length(*probed, path, stop);
        drop_short_length(*probed, path);
    }
    return probed;
}

std::optional<double> start_without_edits(const std::string& path, const StopSignals& stop) {
    const auto answer = probe_entries(path, "format=start_time", stop, {"-advanced_editlist", "0"});
    return answer ? parse_decimal(text(member(*answer, "format"), "start_time")) : std::nullopt;
}

}  // namespace

Result<json> probe_for_report(const std::string& path, const StopSignals& stop) {
    if (auto failure = check_source(path, stop)) {
        return *failure;
    }
    auto probed = probe(path, stop);
    if (probed) {
        remember_probe(path, without_redundant_packets(*probed));
    }
    return probed;
}

Result<json> probe_for_conversion(const std::string& path, const StopSignals& stop) {
    if (auto failure = check_source(path, stop)) {
        return *failure;
    }
    auto kept = recall_probe(path);
    return kept ? std::move(*kept) : probe(path, stop);
}

Result<Movie> find_movie(const std::string& path, const json& probed, const std::set<int>& unusable,
                         const StopSignals& stop) {
    auto movie = moving_movie(path, probed, unusable, stop);
    if (movie && !movie->duration_is_certain) {
        movie->duration = measured_duration(path, *movie, stop);
    }
    const std::string format = text(member(probed, "format"), "format_name");
    if (movie && (format == "mpegts" || format == "mpeg")) {
        const StreamLength length = length_of_stream(path);
        movie->duration = length.without_jumps ? length.without_jumps : movie->duration;
        movie->has_jumping_clock = length.changes_pid;
    }
    if (movie) {
        if (const auto length = JumpingClock{movie->audio.has_value()}.length(path, format)) {
            movie->duration = length;
            movie->has_jumping_clock = true;
            movie->pipe_options = JumpingClock::pipe_options(format);
        }
    }
    if (stop.received() != 0) {
        return stop.failure();
    }
    return movie;
}

Result<Movie> find_movie_to_convert(const std::string& path, const json& probed,
                                    const std::set<int>& unusable, const StopSignals& stop) {
    auto movie = find_movie(path, probed, unusable, stop);
    if (movie && has_mp4_text(movie->subtitles)) {
        movie->text_start = start_without_edits(path, stop);
    }
    return movie;
}

}  // namespace bundle
