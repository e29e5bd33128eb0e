#pragma once

#include <string>
#include <vector>

#include "movie/movie.h"

namespace bundle {

/// What makes stereo of a movie's sound and keeps it in step with the picture, as ffmpeg's "-af"
/// takes it: mono plays at its own level on both sides, three to eight channels without names are
/// mixed in ffmpeg's usual order of so many, and of any other number the first two are taken. A gap
/// becomes silence where it is, unless the times are too jittery to tell a small one.
std::string audio_filters(const AudioStream& audio);

/// Where ffmpeg finds the sound and what it does with it, as options of its output: the stream
/// through `audio_filters`, or two streams as the two sides.
std::vector<std::string> audio_source(const AudioStream& audio);

}  // namespace bundle
