#include "clock/jumping_clock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <limits>

#include "clock/asf_parts.h"
#include "clock/even_clock.h"
#include "clock/file_pieces.h"
#include "clock/flv_clock.h"
#include "clock/matroska_clock.h"
#include "clock/stream_clock.h"
#include "clock/transport_feed.h"
#include "clock/transport_stream.h"

namespace bundle {

namespace {

// Milliseconds. A movie with audio has packets all the time; one that is streamed may lack some.
constexpr std::int64_t kLongestGap = 60'000;
constexpr std::int64_t kNeverTooLong = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kSoonRead = std::int64_t{64} << 20;
constexpr std::int64_t kHead = std::int64_t{64} << 10;
// The larger ones are for clusters.
constexpr std::array<std::int64_t, 3> kPieces{std::int64_t{256} << 10, std::int64_t{1} << 20,
                                              std::int64_t{4} << 20};

std::int64_t longest_gap(bool has_audio) {
    return has_audio ? kLongestGap : kNeverTooLong;
}

std::int64_t size_of(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 ? status.st_size : 0;
}

std::optional<ClockPoint> first_time(std::string_view piece, bool is_flv, double tick) {
    return is_flv ? first_flv_time(piece) : first_matroska_time(piece, tick);
}

bool is_transport_stream(int file) {
    return looks_like_transport_stream(read_piece(file, 0, kTransportHead));
}

void hand_on(int file, bool is_flv, EvenClock& clock, const ByteSink& sink) {
    if (is_flv) {
        hand_on_flv(file, clock, sink);
    } else {
        hand_on_matroska(file, size_of(file), clock, sink);
    }
}

/// By all of its packets, in seconds.
double exact_length(int file, bool is_flv, EvenClock clock) {
    hand_on(file, is_flv, clock, [](std::string_view) { return true; });
    return static_cast<double>(clock.length()) / 1000;
}

bool is_asf(const std::string& format) {
    return format == "asf";
}

std::vector<AsfPart> parts_in(int file) {
    return asf_parts(size_of(file), [file](std::int64_t from, std::int64_t count) {
        return read_piece(file, from, count);
    });
}

std::optional<double> length_of_joined_asf(int file) {
    const auto parts = parts_in(file);
    return are_of_one_movie(parts) ? length_of(parts) : std::nullopt;
}

}  // namespace

std::optional<double> JumpingClock::length(const std::string& path,
                                           const std::string& format) const {
    const bool is_flv = format == "flv";
    if (!is_flv && !is_asf(format) && !format.starts_with("matroska")) {
        return std::nullopt;
    }
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (is_asf(format)) {
        return length_of_joined_asf(file.get());
    }
    const double tick = is_flv ? 1 : matroska_tick(read_piece(file.get(), 0, kHead));
    const ReadClock read = [&](std::int64_t place) {
        std::optional<ClockPoint> point;
        for (const std::int64_t size : kPieces) {
            if (!point && (point = first_time(read_piece(file.get(), place, size), is_flv, tick))) {
                point->place += place;
            }
        }
        return point;
    };
    const std::int64_t size = size_of(file.get());
    const std::int64_t gap = longest_gap(has_audio);
    const auto length = length_without_jumps(size, read, static_cast<double>(gap) / 1000);
    return length && size <= kSoonRead ? exact_length(file.get(), is_flv, EvenClock(gap)) : length;
}

std::vector<std::string> JumpingClock::pipe_options(const std::string& format) {
    return is_asf(format) ? std::vector<std::string>{"-f",
                                                     "concat",
                                                     "-safe",
                                                     "0",
                                                     "-protocol_whitelist",
                                                     "file,pipe,subfile"}
                          : std::vector<std::string>{};
}

Result<PipeFeed> JumpingClock::start_feed(const UniqueFd& file) const {
    if (const auto parts = parts_in(file.get()); !parts.empty()) {
        return PipeFeed::start([&](const ByteSink& sink) { sink(part_list(parts, file.get())); });
    }
    if (is_transport_stream(file.get())) {
        return PipeFeed::start([&](const ByteSink& sink) { hand_on_transport(file.get(), sink); });
    }
    EvenClock clock(longest_gap(has_audio));
    const bool is_flv = read_piece(file.get(), 0, kFlv.size()) == kFlv;
    return PipeFeed::start([&](const ByteSink& sink) { hand_on(file.get(), is_flv, clock, sink); });
}

}  // namespace bundle
