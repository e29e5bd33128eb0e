#include "ffmpeg/shape_fit.h"

#include <utility>

#include "core/formatted.h"

namespace bundle {

namespace {

/// The stored size as the filters see it: ffmpeg turns rotated movies upright first.
Size upright(const VideoStream& video) {
    Size stored = video.stored;
    if (is_quarter_turn(video.rotation.value_or(0))) {
        std::swap(stored.width, stored.height);
    }
    return stored;
}

/// The aspect ratio of the upright picture in a player.
double shown_aspect(const VideoStream& video) {
    const double stored = pixel_aspect(video.aspect) * video.stored.width / video.stored.height;
    return is_quarter_turn(video.rotation.value_or(0)) ? 1 / stored : stored;
}

/// False for an implausible aspect, which ffmpeg's filters would use nevertheless.
bool has_plain_aspect(const VideoStream& video) {
    return !video.aspect || pixel_aspect(video.aspect) == video.aspect->value();
}

/// pad rounds its sides down to whole chroma samples; the picture would not fit.
bool is_whole_in_chroma(const std::string& pixel_format, Size size) {
    const bool quarters = pixel_format.starts_with("yuv41");
    const int unit = quarters ? 4 : 2;
    return size.width % unit == 0 && size.height % unit == 0;
}

}  // namespace

bool can_fit_shapes(const VideoStream& video) {
    return has_plain_aspect(video) && video.pixel_format.starts_with("yuv") &&
           video.stored.width > 0 && video.stored.height > 0 &&
           is_whole_in_chroma(video.pixel_format, video.stored);
}

std::string fit_filters(const VideoStream& video) {
    if (!can_fit_shapes(video)) {
        return "";
    }
    const Size size = upright(video);
    const double aspect = shown_aspect(video);
    // Register 0 is how much wider a frame is than the movie; small differences are rounding. Sides
    // that are multiples of four keep the fields of interlaced frames apart.
    return formatted(
        "scale=w='if(lt(st(0,a*if(between(sar,0.1,10),sar,1)/%.6f),0.985),"
        "max(4,4*round(%d*ld(0)/4)),%d)':"
        "h='if(gt(st(0,a*if(between(sar,0.1,10),sar,1)/%.6f),1.015),"
        "max(4,4*round(%d/ld(0)/4)),%d)':eval=frame:interl=-1,pad=%d:%d:-1:-1:eval=frame,",
        aspect, size.width, size.width, aspect, size.height, size.height, size.width, size.height);
}

}  // namespace bundle
