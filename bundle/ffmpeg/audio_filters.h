#pragma once

#include <string>
#include <vector>

#include "movie/movie.h"

namespace bundle {

/// The "-af" filters that make stereo of the audio and keep it in sync with the video: mono plays
/// at its own level on both sides, three to eight unnamed channels are mixed in ffmpeg's usual
/// order, and of other unnamed channels the first two are used. Gaps become silence, except small
/// ones if the times are too jittery to detect them.
std::string audio_filters(const AudioStream& audio);

/// The output options that select the audio and filter it: one stream through `audio_filters`, or
/// two streams as the left and the right side.
std::vector<std::string> audio_source(const AudioStream& audio);

}  // namespace bundle
