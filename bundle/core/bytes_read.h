#pragma once

#include <sys/types.h>

#include <cstdint>
#include <istream>

namespace bundle {

/// How many bytes the running process has read so far, in whatever way; 0 where the system does not
/// say (only Linux does).
std::int64_t bytes_read(pid_t id);

/// The same out of the text of /proc/ID/io, as proc(5) describes it.
std::int64_t bytes_read_in(std::istream& text);

}  // namespace bundle
