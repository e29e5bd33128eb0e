#include "movie/header_duration.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

// Seconds; a smaller difference does not matter.
constexpr double kLateStart = 2;

/// A time as Matroska tags have it, "01:02:03.456000000", in seconds.
std::optional<double> parse_clock(const std::string& clock) {
    const std::size_t minutes = clock.find(':');
    const std::size_t seconds = clock.rfind(':');
    if (minutes == seconds) {
        return std::nullopt;
    }
    const auto hours = parse_integer(clock.substr(0, minutes));
    const auto minute = parse_integer(clock.substr(minutes + 1, seconds - minutes - 1));
    const auto second = parse_decimal(clock.substr(seconds + 1));
    if (!hours || !minute || !second) {
        return std::nullopt;
    }
    return static_cast<double>(*hours) * 3600 + static_cast<double>(*minute) * 60 + *second;
}

/// Where a stream ends by the file's header, in seconds after the movie's start.
std::optional<double> end_of(const json& stream, double start) {
    for (const char* name : {"DURATION", "DURATION-eng"}) {
        if (const auto end = parse_clock(text(member(stream, "tags"), name))) {
            return end;
        }
    }
    const auto duration = parse_decimal(text(stream, "duration"));
    const double begin = parse_decimal(text(stream, "start_time")).value_or(start);
    return duration ? std::optional(begin - start + *duration) : std::nullopt;
}

/// False for attachments and covers.
bool counts_towards_duration(const json& stream) {
    return text(stream, "codec_type") != "attachment" &&
           whole(member(stream, "disposition"), "attached_pic") == 0;
}

std::optional<double> positive(std::optional<double> seconds) {
    return seconds && *seconds > 0 ? seconds : std::nullopt;
}

/// True when the duration may be the timestamp of the movie's end.
bool may_be_end(const Movie& movie, const std::string& format) {
    return movie.duration && movie.start > kLateStart && *movie.duration > movie.start &&
           (format == "asf" || format.starts_with("matroska"));
}

bool is_taken(const Movie& movie, int index) {
    return index == movie.video.index || (movie.audio && index == movie.audio->index);
}

}  // namespace

void set_duration(Movie& movie, const json& probed) {
    movie.duration = positive(parse_decimal(text(member(probed, "format"), "duration")));
    bool alone = true;
    bool all_known = true;
    std::optional<double> longest;
    for (const json& stream : member(probed, "streams")) {
        if (is_taken(movie, whole(stream, "index"))) {
            const auto end = positive(end_of(stream, movie.start));
            all_known = all_known && end;
            longest = std::max(longest, end);
        } else {
            alone = alone && !counts_towards_duration(stream);
        }
    }
    if (!movie.duration) {
        movie.duration = longest;
    } else if (!alone && all_known) {
        movie.duration = std::min(movie.duration, longest);
    }
    movie.duration_may_be_end = may_be_end(movie, text(member(probed, "format"), "format_name"));
    const json& summed = member(probed, "summed_length");
    if (summed.is_number()) {
        movie.duration = summed.get<double>();
        all_known = true;
    }
    movie.duration_is_certain =
        movie.duration && (alone || all_known) && !movie.duration_may_be_end;
}

double length_by_header(const Movie& movie, double last_end) {
    const double duration = movie.duration.value_or(0);
    return movie.duration_may_be_end && last_end <= duration + kLateStart ? duration - movie.start
                                                                          : duration;
}

}  // namespace bundle
