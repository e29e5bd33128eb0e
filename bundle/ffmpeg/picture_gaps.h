#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bundle {

/// How many frames a video should have, and how many of them were read.
struct FrameCount {
    double expected = 0;  ///< 0: unknown
    std::int64_t read = 0;
};

/// A sentence on a movie of which more than a third of the frames, and more than two seconds at
/// `rate` frames per second, could not be read; empty for any other.
///
/// The share is that large because a soft-telecined movie repeats up to a quarter of its frames.
std::string picture_gaps(const FrameCount& frames, double rate);

/// True when a line of ffmpeg's messages is about something other than decoding the audio stream
/// `index`, which has this codec.
bool has_other_errors(std::string_view messages, int index, std::string_view codec);

}  // namespace bundle
