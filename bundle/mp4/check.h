#pragma once

#include <string>

#include "core/result.h"

namespace bundle {

/// What an MP4 file has to hold.
struct ExpectedStreams {
    bool audio = false;
    int subtitle_tracks = 0;
};

/// Looks by its index whether a finished MP4 file is whole and holds a picture and these streams; a
/// stream without content is missing. The seconds that it is seen or heard for, 0 when not told.
Result<double> check_mp4(const std::string& path, const ExpectedStreams& expected);

/// How long the picture of an MP4 file is, in seconds; 0 when that can't be found out.
double picture_length(const std::string& path);

/// True when what was made of a movie of `promised` seconds is nearly nothing: less than a
/// hundredth.
bool is_nearly_nothing(double promised, double made);

/// What to tell about an MP4 file that is shorter than its source promised, by more than two
/// seconds and two percent; empty for any other. Both durations in seconds.
std::string shortfall(double promised, double made);

}  // namespace bundle
