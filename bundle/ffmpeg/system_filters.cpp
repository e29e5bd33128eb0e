#include "ffmpeg/system_filters.h"

#include <algorithm>

#include "process/ffmpeg_filters.h"

namespace bundle {

SystemFilters system_filters_for(const Movie& movie, const StopSignals& stop) {
    const auto& subtitles = movie.subtitles;
    const bool has_teletext = std::any_of(subtitles.begin(), subtitles.end(), is_teletext);
    return {!movie.video.needs_colour_conversion || has_colour_filters(stop),
            !has_teletext || has_teletext_decoder(stop)};
}

}  // namespace bundle
