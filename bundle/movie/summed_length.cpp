#include "movie/summed_length.h"

#include <fcntl.h>

#include <nlohmann/json.hpp>

#include "clock/file_pieces.h"
#include "clock/ogg_links.h"
#include "clock/packet_ends.h"
#include "core/files.h"
#include "core/json_reading.h"
#include "core/numbers.h"
#include "core/unique_fd.h"
#include "movie/input_options.h"
#include "movie/movie.h"
#include "process/ffprobe.h"

namespace bundle {

namespace {

using nlohmann::json;

// Some seconds from a slow disk.
constexpr std::int64_t kMostRead = std::int64_t{256} << 20;

bool has_clock(const json& probed) {
    return !text(member(probed, "format"), "start_time").empty();
}

std::optional<double> length_of_packets(const json& probed, const std::string& path,
                                        const StopSignals& stop) {
    const auto movie = movie_from(probed);
    if (!movie || file_size(path) > kMostRead) {
        return std::nullopt;
    }
    const auto packets =
        probe_entries(path, "packet=duration_time", stop,
                      {"-select_streams", std::to_string(movie->video.index)}, kMostRead);
    return packets ? sum_of_packets(*packets) : std::nullopt;
}

/// The lengths of all parts together; nothing where there is only one.
std::optional<double> length_of_links(int file, std::int64_t size, const StopSignals& stop) {
    const auto links = ogg_links(size, [file](std::int64_t from, std::int64_t length) {
        return read_piece(file, from, length);
    });
    if (links.size() < 2) {
        return std::nullopt;
    }
    double sum = 0;
    for (const ByteRange& link : links) {
        const auto end = end_of_part(file, link, stop);
        if (!end) {
            return std::nullopt;
        }
        sum += *end;
    }
    return sum;
}

std::optional<double> length_of_joined_ogg(const std::string& path, const StopSignals& stop) {
    const std::int64_t size = file_size(path);
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return size > kMostRead ? std::nullopt : length_of_links(file.get(), size, stop);
}

/// ffmpeg's decoder of Theora can't begin again in several threads.
void decode_in_one_thread(json& probed) {
    InputOptions options = input_options(probed);
    options.insert(options.end(), {"-threads", "1"});
    keep_input_options(probed, options);
}

bool is_ogg(const json& probed) {
    return text(member(probed, "format"), "format_name") == "ogg";
}

std::optional<double> summed_length(const json& probed, const std::string& path,
                                    const StopSignals& stop) {
    if (is_ogg(probed)) {
        return length_of_joined_ogg(path, stop);
    }
    return has_clock(probed) ? std::nullopt : length_of_packets(probed, path, stop);
}

}  // namespace

std::optional<double> sum_of_packets(const json& probed) {
    double sum = 0;
    for (const json& packet : member(probed, "packets")) {
        const auto length = parse_decimal(text(packet, "duration_time"));
        if (!length) {
            return std::nullopt;
        }
        sum += *length;
    }
    return sum > 0 ? std::optional(sum) : std::nullopt;
}

void set_summed_length(json& probed, const std::string& path, const StopSignals& stop) {
    if (const auto length = summed_length(probed, path, stop)) {
        probed["summed_length"] = *length;
        if (is_ogg(probed)) {
            decode_in_one_thread(probed);
        }
    }
}

}  // namespace bundle
