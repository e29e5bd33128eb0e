#pragma once

#include <cstdint>
#include <vector>

#include "clock/file_pieces.h"
#include "process/pipe_feed.h"

namespace bundle {

/// The movies that are joined in an Ogg file of `size` bytes (RFC 3533, 4): a new one begins at the
/// first page that opens a stream after pages that don't. Ends at a page that is damaged.
std::vector<ByteRange> ogg_links(std::int64_t size, const ReadBytes& read);

}  // namespace bundle
