#include "ffmpeg/shape_fit.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

VideoStream video_of(Size stored, std::optional<Rational> aspect = {}) {
    VideoStream video;
    video.pixel_format = "yuv420p";
    video.stored = stored;
    video.aspect = aspect;
    return video;
}

TEST(ShapeFit, BringsFramesToTheStoredSize) {
    EXPECT_EQ(fit_filters(video_of({720, 576}, Rational{64, 45})),
              "scale=w='if(lt(st(0,a*if(between(sar,0.1,10),sar,1)/1.777778),0.985),"
              "max(4,4*round(720*ld(0)/4)),720)':"
              "h='if(gt(st(0,a*if(between(sar,0.1,10),sar,1)/1.777778),1.015),"
              "max(4,4*round(576/ld(0)/4)),576)':eval=frame:interl=-1,"
              "pad=720:576:-1:-1:eval=frame,");
}

TEST(ShapeFit, SeesRotatedMoviesUpright) {
    VideoStream video = video_of({640, 480}, Rational{3, 2});
    video.rotation = -90;
    EXPECT_NE(fit_filters(video).find("sar,1)/0.500000)"), std::string::npos);
    EXPECT_NE(fit_filters(video).find("pad=480:640:"), std::string::npos);
}

TEST(ShapeFit, IsLeftOutWhereThePadFilterWouldCut) {
    EXPECT_TRUE(can_fit_shapes(video_of({162, 122})));
    EXPECT_EQ(fit_filters(video_of({161, 122})), "");
    EXPECT_EQ(fit_filters(video_of({162, 121})), "");
    VideoStream video = video_of({162, 122});
    video.pixel_format = "yuv411p";
    EXPECT_EQ(fit_filters(video), "");
    video.pixel_format = "rgb24";
    EXPECT_EQ(fit_filters(video), "");
}

TEST(ShapeFit, IsLeftOutWhereTheAspectIsDamage) {
    EXPECT_FALSE(can_fit_shapes(video_of({160, 120}, Rational{1, 4000})));
}

}  // namespace
}  // namespace bundle
