#include "movie/main_shape.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "clock/file_pieces.h"
#include "core/files.h"
#include "core/json_reading.h"
#include "core/unique_fd.h"
#include "movie/movie.h"
#include "process/ffprobe.h"

namespace bundle {

namespace {

using nlohmann::json;

// A piece is about a second of television in high definition, which holds a whole frame.
constexpr int kPieces = 6;
constexpr std::int64_t kPieceSize = std::int64_t{1} << 20;

template <typename Names>
bool is_one_of(std::string_view name, const Names& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The next of the values that commas part, taken off the line.
std::string_view next_value(std::string_view& line) {
    const std::size_t cut = std::min(line.find(','), line.size());
    const std::string_view value = line.substr(0, cut);
    line.remove_prefix(std::min(cut + 1, line.size()));
    return value;
}

void set_shape(json& stream, std::string_view shape) {
    stream["width"] = parse_integer(next_value(shape)).value_or(0);
    stream["height"] = parse_integer(next_value(shape)).value_or(0);
    stream["sample_aspect_ratio"] = std::string(next_value(shape));
}

std::optional<std::string> sampled_shape(const std::string& path, const Movie& movie,
                                         const StopSignals& stop) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const auto input = PipeFeed::start(
        file.get(), spread_pieces(file.get(), file_size(path), kPieces, kPieceSize));
    if (!input) {
        return std::nullopt;
    }
    ShapeTimes shapes;
    const auto failure =
        read_key_frames(input->reader(), movie.video.index, movie.input_options,
                        "best_effort_timestamp_time,width,height,sample_aspect_ratio", stop,
                        [&shapes](std::string_view line) { shapes.add(line); });
    const auto end = movie.duration ? std::optional(movie.start + *movie.duration) : std::nullopt;
    return failure ? std::nullopt : shapes.longest(end);
}

}  // namespace

void ShapeTimes::add(std::string_view line) {
    const auto time = parse_decimal(next_value(line));
    const std::string_view width = next_value(line);
    const std::string_view height = next_value(line);
    if (parse_integer(width).value_or(0) <= 0 || parse_integer(height).value_or(0) <= 0) {
        return;
    }
    last_until(time);
    since_ = time;
    current_ = std::string(width);
    current_.append(",").append(height).append(",").append(next_value(line));
    if (first_.empty()) {
        first_ = current_;
    }
}

void ShapeTimes::last_until(std::optional<double> time) {
    // Also where clocks jump back, each frame counts a little.
    constexpr double kLeast = 0.04;
    if (!current_.empty()) {
        seconds_[current_] += time && since_ ? std::max(*time - *since_, kLeast) : kLeast;
    }
}

std::optional<std::string> ShapeTimes::longest(std::optional<double> end) {
    last_until(end);
    if (seconds_.empty()) {
        return std::nullopt;
    }
    const auto found = std::max_element(
        seconds_.begin(), seconds_.end(),
        [](const auto& one, const auto& other) { return one.second < other.second; });
    return found->second > seconds_.at(first_) ? found->first : first_;
}

bool may_change_shape(std::string_view format, std::string_view codec) {
    constexpr std::array<std::string_view, 3> kBroadcast{"mpegts", "mpeg", "mpegvideo"};
    constexpr std::array<std::string_view, 3> kBrowsers{"vp8", "vp9", "av1"};
    return is_one_of(format, kBroadcast) ||
           (format == "matroska,webm" && is_one_of(codec, kBrowsers));
}

void set_main_shape(json& probed, const std::string& path, const StopSignals& stop) {
    const auto movie = movie_from(probed);
    if (!movie ||
        !may_change_shape(text(member(probed, "format"), "format_name"), movie->video.codec)) {
        return;
    }
    const auto shape = sampled_shape(path, *movie, stop);
    if (!shape) {
        return;
    }
    for (json& stream : probed["streams"]) {
        if (whole(stream, "index") == movie->video.index) {
            set_shape(stream, *shape);
        }
    }
}

}  // namespace bundle
