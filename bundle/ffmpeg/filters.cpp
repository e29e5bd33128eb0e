#include "ffmpeg/filters.h"

#include "ffmpeg/frame_times.h"
#include "ffmpeg/interlacing.h"
#include "ffmpeg/shape_fit.h"
#include "movie/colour.h"
#include "movie/decoding_delay.h"

namespace bundle {

std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool convert_colours) {
    const Size size = even({request.width, request.height});
    const ColourPlan plan = colour_plan(video.colour, size, convert_colours);
    return undelay_filter(video) + fit_filters(video) + deinterlacer(video) +
           rate_filter(request, video) + plan.filters + ",format=yuv420p,setsar=1," +
           setparams(plan.result);
}

}  // namespace bundle
