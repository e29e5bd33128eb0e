#pragma once

#include <cstdint>
#include <string>

namespace bundle {

/// How many bytes of a movie ffprobe may read for a report. A movie that needs more for its sample
/// of packets, such as one with uncompressed pictures, gets a shorter sample.
inline constexpr std::int64_t kMostReadForReport = std::int64_t{24} << 20;

/// The same for the shorter sample, which holds eight pictures of uncompressed 8K. A movie that
/// needs more is refused.
inline constexpr std::int64_t kMostReadForShortSample = std::int64_t{512} << 20;

/// How far a second look goes for an audio stream that begins late, in bytes: more than 20 s of a
/// DVD.
inline constexpr std::int64_t kFarLook = std::int64_t{32} << 20;

/// How many bytes the second look may read, with its sample; where it needs more, the first one
/// counts.
inline constexpr std::int64_t kMostReadForFarLook = kFarLook + (std::int64_t{8} << 20);

/// The beginning of a movie as ffprobe's "-read_intervals" takes it: enough to see every stream of
/// one that is laid out as it plays.
inline constexpr const char* kSample = "%+#400";

/// What is sampled instead where that is too much.
inline constexpr const char* kShortSample = "%+#8";

/// What is sampled in the second look: what it has read by then holds so many of 50 Mbit/s.
inline constexpr const char* kFarSample = "%+#100";

/// True for a file that holds only zeros at its beginning, in its middle and at its end, such as a
/// download that has not begun: raw formats, known by their names alone, would be searched for
/// pictures to the end.
bool looks_blank(const std::string& path);

}  // namespace bundle
