#pragma once

#include <cstdint>
#include <string>

namespace bundle {

/// How many bytes of a movie ffprobe may read for a report. A movie that needs more for its sample
/// of packets, for instance an uncompressed one, gets a shorter sample.
inline constexpr std::int64_t kMostReadForReport = std::int64_t{24} << 20;

/// The same for the shorter sample; enough for eight frames of uncompressed 8K. A movie that needs
/// more is refused.
inline constexpr std::int64_t kMostReadForShortSample = std::int64_t{512} << 20;

/// How far a second look goes for an audio stream that begins late, in bytes; more than 20 s of a
/// DVD.
inline constexpr std::int64_t kFarLook = std::int64_t{32} << 20;

/// How many bytes the second look may read including its sample. If it needs more, the first look
/// counts.
inline constexpr std::int64_t kMostReadForFarLook = kFarLook + (std::int64_t{8} << 20);

/// The sample of a movie's beginning for ffprobe's "-read_intervals": enough packets to see every
/// stream of an interleaved movie.
inline constexpr const char* kSample = "%+#400";

/// The shorter sample.
inline constexpr const char* kShortSample = "%+#8";

/// The sample of the second look: at 50 Mbit/s, about the packets of what it has read anyway.
inline constexpr const char* kFarSample = "%+#100";

/// True for a file with only zeros at its beginning, in its middle and at its end, for instance a
/// download that has not begun. ffmpeg would search all of it for pictures if its name is that of a
/// raw format.
bool looks_blank(const std::string& path);

}  // namespace bundle
