#include "ffmpeg/interlacing.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace bundle {

namespace {

// bwdif refuses smaller pictures: it needs four lines, also of chroma, which has half the size.
constexpr int kSmallestInterlaced = 16;

/// True for YUV that ffmpeg can convert to planar without loss.
bool is_yuv(std::string_view pixel_format) {
    constexpr std::array<std::string_view, 12> kStarts{"yuv", "yvyu", "uyvy", "nv1",  "nv2", "p01",
                                                       "p21", "p41",  "y21",  "ayuv", "vuy", "xv"};
    return pixel_format == "yuyv422" ||
           std::any_of(kStarts.begin(), kStarts.end(),
                       [&](std::string_view start) { return pixel_format.starts_with(start); });
}

/// What a file says is ignored, because it is often wrong (DV in MOV claims to be progressive).
/// The deinterlacer only touches marked frames, so it does no harm to progressive ones.
bool may_be_interlaced(const VideoStream& video) {
    return is_yuv(video.pixel_format) && video.stored.width >= kSmallestInterlaced &&
           video.stored.height >= kSmallestInterlaced;
}

/// Marks the frames if their decoder does not.
std::string missing_marks(const VideoStream& video) {
    constexpr std::array<std::string_view, 5> kUnmarking{"huffyuv", "ffvhuff", "v308", "v408",
                                                         "v410"};
    if (std::find(kUnmarking.begin(), kUnmarking.end(), video.codec) == kUnmarking.end()) {
        return "";
    }
    if (video.field_order == "tt" || video.field_order == "tb") {
        return "setfield=tff,";
    }
    return video.field_order == "bb" || video.field_order == "bt" ? "setfield=bff," : "";
}

}  // namespace

std::string deinterlacer(const VideoStream& video) {
    return may_be_interlaced(video)
               ? missing_marks(video) + "bwdif=mode=send_frame:deint=interlaced,"
               : "";
}

}  // namespace bundle
