#pragma once

#include <string>

#include "core/result.h"

namespace bundle {

/// What an MP4 file has to contain besides the picture.
struct ExpectedStreams {
    bool audio = false;
    int subtitle_tracks = 0;
};

/// Checks by its index that an MP4 file is complete and has a picture and these streams, none of
/// them empty. Returns the length of picture and sound in seconds, 0 when it is unknown.
Result<double> check_mp4(const std::string& path, const ExpectedStreams& expected);

/// The length of an MP4 file's picture in seconds, 0 when it is unknown.
double picture_length(const std::string& path);

/// True when less than a hundredth of a movie of `promised` seconds was made.
bool is_nearly_nothing(double promised, double made);

/// The sentence about an MP4 file that is shorter than its source promised, by more than two
/// seconds and two percent; else empty. Both durations are in seconds.
std::string shortfall(double promised, double made);

}  // namespace bundle
