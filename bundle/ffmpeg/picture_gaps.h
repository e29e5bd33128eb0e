#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bundle {

/// How many frames a picture should have, and how many of them could be read.
struct FrameCount {
    double expected = 0;  ///< 0: unknown
    std::int64_t read = 0;
};

/// The sentence for a movie of which more than a third of the frames, and more than two seconds at
/// `rate` frames a second, could not be read; empty for any other.
///
/// The share is that large because a soft-telecined movie repeats up to a quarter of its frames.
std::string picture_gaps(const FrameCount& frames, double rate);

/// True when a line of ffmpeg's messages is not about the decoding of audio: of the stream `index`,
/// in the codec `codec`.
bool has_other_errors(std::string_view messages, int index, std::string_view codec);

}  // namespace bundle
