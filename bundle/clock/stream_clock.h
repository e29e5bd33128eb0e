#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace bundle {

/// What the clock of a movie shows at a place in its file.
struct ClockPoint {
    std::int64_t place = 0;  ///< bytes from the start of the file
    double seconds = 0;
};

/// The first point at or after a place; empty when there is none near it.
using ReadClock = std::function<std::optional<ClockPoint>(std::int64_t place)>;

/// How long a movie of so many bytes is without the jumps of its clock, in seconds: the clock is
/// read at places spread over the file and, where it jumps, around the jump. Jumps are those back
/// and those forward of more than `longest_gap` seconds, by default what ffmpeg closes in transport
/// and program streams. Empty
/// when there are none. Within a second for each jump, unless the parts between two jumps are
/// shorter than a 16th of the file.
std::optional<double> length_without_jumps(std::int64_t size, const ReadClock& read,
                                           double longest_gap = 10);

/// What the clock of an MPEG transport or program stream shows.
struct StreamLength {
    std::optional<double> without_jumps;  ///< seconds; see `length_without_jumps`
    bool changes_pid = false;             ///< the number of the picture's stream changes on the way
};

/// By the times in a file's packets of pictures (ISO/IEC 13818-1, 2.4.3.6).
StreamLength length_of_stream(const std::string& path);

/// The first time of a picture in a piece of such a stream; its place is in the piece. `pid` is
/// that of the transport stream's packets to look at, -1 for any, and takes that of the one found.
std::optional<ClockPoint> first_time_in(const std::string& piece, int& pid);

}  // namespace bundle
