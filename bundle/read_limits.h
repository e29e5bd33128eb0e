#pragma once

#include <cstdint>
#include <string>

namespace bundle {

/// How much of a movie a report may read. A movie that needs more for its sample of packets, such
/// as one with uncompressed pictures, gets a shorter sample.
inline constexpr std::int64_t kMostReadForReport = std::int64_t{24} << 20;

/// The beginning of a movie as ffprobe's "-read_intervals" takes it: enough to see every stream of
/// one that is laid out as it plays.
inline constexpr const char* kSample = "%+#400";

/// What is sampled instead where that is too much.
inline constexpr const char* kShortSample = "%+#8";

/// True for a file that holds only zeros at its beginning, in its middle and at its end, such as a
/// download that has not begun: raw formats, known by their names alone, would be searched for
/// pictures to the end.
bool looks_blank(const std::string& path);

}  // namespace bundle
