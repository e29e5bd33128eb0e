#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "process/pipe_feed.h"

namespace bundle {

/// What a Matroska file begins with.
inline constexpr std::string_view kMatroska = "\x1A\x45\xDF\xA3";

/// The beginning of a cluster, the unit of a Matroska file that has times.
inline constexpr std::string_view kCluster = "\x1F\x43\xB6\x75";

/// At most so many bytes of a file from a place on.
using ReadBytes = std::function<std::string(std::int64_t from, std::int64_t size)>;

/// At most `size` bytes of an open file; fewer where it ends or can't be read.
std::string read_piece(int file, std::int64_t from, std::int64_t size);

/// The same of a stream.
std::string read_piece(std::istream& file, std::int64_t from, std::size_t size);

/// The number of so many bytes, least significant first; 0 where the text ends before.
std::uint64_t little(std::string_view bytes, std::size_t at, std::size_t width);

/// Where the first cluster begins at or behind `from`; `size`, the file's, when there is none.
std::int64_t cluster_behind(int file, std::int64_t from, std::int64_t size);

/// `count` pieces of about `length` bytes that are spread evenly over a file of `size` bytes, the
/// first at its beginning; all of a file that is not larger than them together. In Matroska they
/// are cut where a cluster begins, if there is one.
std::vector<ByteRange> spread_pieces(int file, std::int64_t size, int count, std::int64_t length);

}  // namespace bundle
