#pragma once

#include <optional>
#include <string>

#include "lifetime.h"
#include "result.h"

namespace bundle {

/// What a finished film has to hold.
struct Streams {
    bool audio = false;
    int subtitle_tracks = 0;
};

/// Opens a finished film and looks whether it holds a picture and these streams; its duration in
/// seconds, 0 when it has none.
Result<double> check_film(const std::string& path, const Streams& streams, const StopSignals& stop);

/// What to tell about a film that is shorter than its source promised, by more than two seconds and
/// two percent; empty for any other. Both durations in seconds.
std::string shortfall(double promised, double made);

}  // namespace bundle
