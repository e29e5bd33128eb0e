#pragma once

#include "core/stop_signals.h"
#include "movie/movie.h"

namespace bundle {

/// What the system's ffmpeg can do that not every build of ffmpeg can.
struct SystemFilters {
    bool can_convert_colours = true;  ///< it has the zscale and tonemap filters
    bool can_decode_teletext = true;
};

/// Asks the system's ffmpeg, which starts it, but only for what the movie needs.
SystemFilters system_filters_for(const Movie& movie, const StopSignals& stop);

}  // namespace bundle
