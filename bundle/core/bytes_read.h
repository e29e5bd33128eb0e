#pragma once

#include <sys/types.h>

#include <cstdint>
#include <istream>

namespace bundle {

/// Bytes that a running process has read so far by any means; 0 where the system does not report
/// them (only Linux does).
std::int64_t bytes_read(pid_t id);

/// The same from the text of /proc/ID/io, see proc(5).
std::int64_t bytes_read_in(std::istream& text);

}  // namespace bundle
