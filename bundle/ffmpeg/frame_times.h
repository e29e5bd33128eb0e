#pragma once

#include <string>
#include <vector>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// What makes the asked rate, as ffmpeg's "-vf" takes it, with a comma at the end: even frames
/// where a rate is asked for; at most 30 frames in any second where the movie's own is uneven;
/// otherwise nothing.
std::string rate_filter(const TranscodeRequest& request, const VideoStream& video);

/// ffmpeg's options that keep frame times where they are: those of an uneven movie, and those of a
/// slow one, of which ffmpeg's own grid of frames is too coarse to stay in step with the sound.
std::vector<std::string> time_options(const TranscodeRequest& request, const VideoStream& video);

/// The most frames per second that come out for longer than a moment.
double highest_rate(const TranscodeRequest& request, const VideoStream& video);

}  // namespace bundle
