#include "ffmpeg/filters.h"

#include <gtest/gtest.h>

#include "ffmpeg/shape_fit.h"

namespace bundle {
namespace {

TranscodeRequest request_of(int width, int height, std::optional<Rational> rate = {}) {
    TranscodeRequest request;
    request.width = width;
    request.height = height;
    request.rate = rate;
    return request;
}

VideoStream video_of(const std::string& pixel_format, Size stored = {640, 480}) {
    VideoStream video;
    video.pixel_format = pixel_format;
    video.stored = stored;
    video.colour = assumed_colour({}, pixel_format, stored);
    return video;
}

const std::string kDeinterlacing = "bwdif=mode=send_frame:deint=interlaced,";
const std::string kEnd =
    "format=yuv420p,setsar=1,setparams=range=tv:color_primaries=smpte170m:color_trc=smpte170m:"
    "colorspace=smpte170m";

TEST(FilterChain, MakesOddSidesEven) {
    const VideoStream video = video_of("yuv420p");
    EXPECT_EQ(picture_filters(request_of(321, 241), video, false),
              fit_filters(video) + kDeinterlacing + "scale=320:240:out_range=tv," + kEnd);
}

TEST(FilterChain, MakesTheAskedRateAfterDeinterlacing) {
    const VideoStream video = video_of("yuv422p");
    EXPECT_EQ(
        picture_filters(request_of(320, 240, Rational{30000, 1001}), video, false),
        fit_filters(video) + kDeinterlacing + "fps=30000/1001,scale=320:240:out_range=tv," + kEnd);
}

}  // namespace
}  // namespace bundle
