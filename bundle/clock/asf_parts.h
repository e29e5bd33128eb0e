#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clock/file_pieces.h"
#include "process/pipe_feed.h"

namespace bundle {

/// What an ASF (WMV) file begins with.
inline constexpr std::string_view kAsf{
    "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16};

/// One of the movies that are joined in an ASF file, by its header.
struct AsfPart {
    ByteRange range;                ///< of those bytes that are there
    bool is_truncated = false;      ///< the header gives a larger size
    std::optional<double> seconds;  ///< empty in a recording that was only streamed
    std::string streams;            ///< its Stream Properties Objects
};

/// The movies in an ASF file of `size` bytes: another one begins where a header stands at the end
/// that the header before it gives (Advanced Systems Format Specification, 3.1 to 3.3). Empty for
/// any other file. Reads less than 100 KB of each movie, and takes what comes after the 100th for a
/// part of that.
std::vector<AsfPart> asf_parts(std::int64_t size, const ReadBytes& read);

/// How long all parts are together, in seconds; empty where that of one is unknown.
std::optional<double> length_of(const std::vector<AsfPart>& parts);

/// True for several parts that can be decoded as one movie: they have the same streams.
bool are_of_one_movie(const std::vector<AsfPart>& parts);

/// The parts as a list for ffmpeg's concat demuxer, which reads them from the descriptor `file`.
std::string part_list(const std::vector<AsfPart>& parts, int file);

}  // namespace bundle
