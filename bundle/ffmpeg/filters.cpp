#include "ffmpeg/filters.h"

#include "ffmpeg/frame_times.h"
#include "ffmpeg/interlacing.h"
#include "ffmpeg/shape_fit.h"
#include "movie/colour.h"
#include "movie/decoding_delay.h"

namespace bundle {

std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool has_zscale) {
    const Size size = even({request.width, request.height});
    const Colour colour = assumed_colour(video.colour, video.pixel_format, video.stored);
    const ColourPlan plan = colour_plan(colour, size, has_zscale);
    std::string filters = undelay_filter(video) + fit_filters(video);
    filters += deinterlacer(video);
    filters += rate_filter(request, video);
    return filters + plan.filters + ",format=yuv420p,setsar=1," + setparams(plan.result);
}

}  // namespace bundle
