#include "film.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

json video_stream(int index) {
    return {{"index", index},
            {"codec_type", "video"},
            {"codec_name", "h264"},
            {"pix_fmt", "yuv420p"},
            {"width", 720},
            {"height", 576},
            {"r_frame_rate", "50/1"},
            {"avg_frame_rate", "25/1"},
            {"time_base", "1/12800"},
            {"duration", "7.000000"},
            {"disposition", {{"attached_pic", 0}}}};
}

json audio_stream(int index) {
    return {{"index", index},
            {"codec_type", "audio"},
            {"codec_name", "ac3"},
            {"sample_rate", "48000"},
            {"channels", 6}};
}

json film_of(const json& streams) {
    return {{"streams", streams},
            {"format",
             {{"duration", "12.345000"}, {"start_time", "1.400000"}, {"bit_rate", "812345"}}}};
}

TEST(Film, HasItsFactsFromTheProbe) {
    const auto film = film_from(film_of({video_stream(0), audio_stream(1)}));
    ASSERT_TRUE(film);
    EXPECT_EQ(film->duration, 12.345);
    EXPECT_EQ(film->start, 1.4);
    EXPECT_EQ(film->bit_rate, 812345);
    EXPECT_EQ(film->video.codec, "h264");
    EXPECT_EQ(film->video.pixel_format, "yuv420p");
    EXPECT_EQ(film->video.width, 720);
    EXPECT_EQ(film->video.height, 576);
    EXPECT_EQ(frame_rate(film->video), 25);
    ASSERT_TRUE(film->audio);
    EXPECT_EQ(film->audio->index, 1);
    EXPECT_EQ(film->audio->sample_rate, 48000);
    EXPECT_EQ(film->audio->channels, 6);
}

TEST(Film, PassesOverCoverPicturesAndUnknownSound) {
    json cover = video_stream(0);
    cover["disposition"]["attached_pic"] = 1;
    json unknown = audio_stream(1);
    unknown.erase("codec_name");
    const auto film =
        film_from(film_of({cover, unknown, video_stream(2), audio_stream(3), video_stream(4)}));
    ASSERT_TRUE(film);
    EXPECT_EQ(film->video.index, 2);
    ASSERT_TRUE(film->audio);
    EXPECT_EQ(film->audio->index, 3);
}

TEST(Film, MayHaveNoSound) {
    const auto film = film_from(film_of(json::array({video_stream(0)})));
    ASSERT_TRUE(film);
    EXPECT_FALSE(film->audio);
}

TEST(Film, NeedsAPicture) {
    EXPECT_FALSE(film_from(film_of(json::array({audio_stream(0)}))));
    EXPECT_FALSE(film_from(film_of(json::array())));
    EXPECT_FALSE(film_from(json::object()));
    json without_size = video_stream(0);
    without_size["width"] = 0;
    EXPECT_FALSE(film_from(film_of(json::array({without_size}))));
}

TEST(Film, IsShownInSquarePixels) {
    json stream = video_stream(0);
    stream["sample_aspect_ratio"] = "64:45";
    const auto film = film_from(film_of(json::array({stream})));
    ASSERT_TRUE(film);
    EXPECT_EQ(film->video.width, 1024);
    EXPECT_EQ(film->video.height, 576);
}

TEST(Film, IsShownUpright) {
    json stream = video_stream(0);
    stream["side_data_list"] = {{{"rotation", -90}}};
    auto film = film_from(film_of(json::array({stream})));
    ASSERT_TRUE(film);
    EXPECT_EQ(film->video.width, 576);
    EXPECT_EQ(film->video.height, 720);
    stream["side_data_list"] = {{{"rotation", 180}}};
    film = film_from(film_of(json::array({stream})));
    EXPECT_EQ(film->video.width, 720);
}

TEST(Film, TakesTheBaseRateAndTheStreamsLengthWhereTheBetterFactsAreMissing) {
    json stream = video_stream(0);
    stream["avg_frame_rate"] = "0/0";
    json probed = film_of(json::array({stream}));
    probed["format"].erase("duration");
    const auto film = film_from(probed);
    ASSERT_TRUE(film);
    EXPECT_EQ(frame_rate(film->video), 50);
    EXPECT_EQ(film->duration, 7.0);
}

TEST(Film, LeavesUnknownFactsOpen) {
    json stream = video_stream(0);
    for (const char* key : {"duration", "avg_frame_rate", "r_frame_rate", "time_base", "pix_fmt"}) {
        stream.erase(key);
    }
    const auto film = film_from({{"streams", json::array({stream})}});
    ASSERT_TRUE(film);
    EXPECT_FALSE(film->duration);
    EXPECT_FALSE(film->bit_rate);
    EXPECT_EQ(frame_rate(film->video), 0);
}

TEST(Film, IsNotUpsetByWrongTypes) {
    EXPECT_FALSE(film_from(json::array({1})));
    EXPECT_FALSE(film_from({{"streams", "none"}}));
    EXPECT_FALSE(film_from({{"streams", {1, nullptr, {{"codec_type", 5}}}}}));
}

}  // namespace
}  // namespace bundle
