#include "ffmpeg/interlacing.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

VideoStream video_of(const std::string& pixel_format, Size stored = {640, 480}) {
    VideoStream video;
    video.pixel_format = pixel_format;
    video.stored = stored;
    return video;
}

const std::string kDeinterlacing = "bwdif=mode=send_frame:deint=interlaced,";

TEST(Interlacing, IsTakenOutOfEveryFormOfLumaAndChroma) {
    for (const char* format : {"yuv420p", "yuvj422p", "yuv422p10le", "uyvy422", "yuyv422",
                               "yvyu422", "nv12", "nv16", "p010le", "p210le", "y210le"}) {
        EXPECT_EQ(deinterlacer(video_of(format)), kDeinterlacing) << format;
    }
}

TEST(Interlacing, IsNotLookedForInRgbAndTinyPictures) {
    for (const auto& video : {video_of("rgb24"), video_of("yuv420p", {64, 8}), video_of("pal8")}) {
        EXPECT_EQ(deinterlacer(video), "");
    }
}

TEST(Interlacing, IsTheFilesWhereTheDecoderMarksNoFrames) {
    VideoStream video = video_of("yuv422p");
    video.codec = "huffyuv";
    video.field_order = "tt";
    EXPECT_EQ(deinterlacer(video), "setfield=tff," + kDeinterlacing);
    video.field_order = "bb";
    EXPECT_EQ(deinterlacer(video), "setfield=bff," + kDeinterlacing);
    video.field_order = "progressive";
    EXPECT_EQ(deinterlacer(video), kDeinterlacing);
    video.codec = "dvvideo";
    video.field_order = "tt";
    EXPECT_EQ(deinterlacer(video), kDeinterlacing);
}

}  // namespace
}  // namespace bundle
