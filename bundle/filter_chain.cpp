#include "filter_chain.h"

#include "colour.h"

namespace bundle {

namespace {

// bwdif refuses a smaller picture: half of each side is its chroma, of which it needs four lines.
constexpr int kSmallestInterlaced = 16;

/// Only frames that are marked are touched, so that it may stand where a film is mostly
/// progressive; what a file says as a whole is often wrong (DV in MOV calls itself progressive).
bool may_be_interlaced(const VideoStream& video) {
    return video.pixel_format.starts_with("yuv") && video.stored.width >= kSmallestInterlaced &&
           video.stored.height >= kSmallestInterlaced;
}

/// The asked rate is made by a filter: ffmpeg's own "-r" adds frames at the end of the film.
std::string rate_filter(const Rational& rate) {
    return "fps=" + std::to_string(rate.numerator) + "/" + std::to_string(rate.denominator) + ",";
}

}  // namespace

std::string picture_filters(const TranscodeRequest& request, const VideoStream& video,
                            bool has_zscale) {
    const Size size = even({request.width, request.height});
    const Colour colour = assumed_colour(video.colour, video.pixel_format, video.stored);
    const ColourPlan plan = colour_plan(colour, size, has_zscale);
    std::string filters = may_be_interlaced(video) ? "bwdif=mode=send_frame:deint=interlaced," : "";
    filters += request.rate ? rate_filter(*request.rate) : "";
    return filters + plan.filters + ",format=yuv420p,setsar=1," + setparams(plan.result);
}

}  // namespace bundle
