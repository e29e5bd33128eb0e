#include "movie/movie.h"

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
    return {{"index", index},         {"codec_type", "audio"},  {"codec_name", "ac3"},
            {"sample_fmt", "fltp"},   {"sample_rate", "48000"}, {"channels", 6},
            {"channel_layout", "5.1"}};
}

json movie_of(const json& streams) {
    return {{"streams", streams},
            {"format",
             {{"duration", "12.345000"}, {"start_time", "1.400000"}, {"bit_rate", "812345"}}}};
}

TEST(Movie, HasItsFactsFromTheProbe) {
    const auto movie = movie_from(movie_of({video_stream(0), audio_stream(1)}));
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->duration, 12.345);
    EXPECT_EQ(movie->start, 1.4);
    EXPECT_EQ(movie->bit_rate, 812345);
    EXPECT_EQ(movie->video.codec, "h264");
    EXPECT_EQ(movie->video.pixel_format, "yuv420p");
    EXPECT_EQ(movie->video.stored, (Size{720, 576}));
    EXPECT_EQ(movie->video.shown, (Size{720, 576}));
    EXPECT_EQ(frame_rate(movie->video), 25);
    ASSERT_TRUE(movie->audio);
    EXPECT_EQ(movie->audio->index, 1);
    EXPECT_EQ(movie->audio->sample_rate, 48000);
    EXPECT_EQ(movie->audio->channels, 6);
    EXPECT_TRUE(movie->audio->has_layout);
}

TEST(Movie, PassesOverCoverPicturesAndUnknownSound) {
    json cover = video_stream(0);
    cover["disposition"]["attached_pic"] = 1;
    json unknown = audio_stream(1);
    unknown.erase("codec_name");
    const auto movie =
        movie_from(movie_of({cover, unknown, video_stream(2), audio_stream(3), video_stream(4)}));
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->video.index, 2);
    ASSERT_TRUE(movie->audio);
    EXPECT_EQ(movie->audio->index, 3);
}

TEST(Movie, MayHaveNoSound) {
    const auto movie = movie_from(movie_of(json::array({video_stream(0)})));
    ASSERT_TRUE(movie);
    EXPECT_FALSE(movie->audio);
}

TEST(Movie, NeedsAPicture) {
    EXPECT_FALSE(movie_from(movie_of(json::array({audio_stream(0)}))));
    EXPECT_FALSE(movie_from(movie_of(json::array())));
    EXPECT_FALSE(movie_from(json::object()));
    json without_size = video_stream(0);
    without_size["width"] = 0;
    EXPECT_FALSE(movie_from(movie_of(json::array({without_size}))));
    json without_decoder = video_stream(0);
    without_decoder.erase("pix_fmt");
    EXPECT_FALSE(movie_from(movie_of(json::array({without_decoder}))));
}

TEST(Movie, PassesOverSoundWithoutADecoder) {
    json undecodable = audio_stream(1);
    undecodable["sample_fmt"] = "unknown";
    const auto movie = movie_from(movie_of({video_stream(0), undecodable, audio_stream(2)}));
    ASSERT_TRUE(movie && movie->audio);
    EXPECT_EQ(movie->audio->index, 2);
}

TEST(Movie, TakesTheDefaultSoundAndPicture) {
    json sound = audio_stream(3);
    json picture = video_stream(4);
    sound["disposition"]["default"] = 1;
    picture["disposition"]["default"] = 1;
    const auto movie =
        movie_from(movie_of({video_stream(0), audio_stream(1), audio_stream(2), sound, picture}));
    ASSERT_TRUE(movie && movie->audio);
    EXPECT_EQ(movie->video.index, 4);
    EXPECT_EQ(movie->audio->index, 3);
}

TEST(Movie, PassesOverStreamsThatTurnedOutUnusable) {
    const auto movie =
        movie_from(movie_of({video_stream(0), audio_stream(1), video_stream(2)}), {0, 1});
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->video.index, 2);
    EXPECT_FALSE(movie->audio);
}

TEST(Movie, CountsTheFramesOfItsBeginning) {
    json probed = movie_of({video_stream(0), video_stream(1)});
    probed["packets"] = {{{"stream_index", 0}}, {{"stream_index", 1}}, {{"stream_index", 1}}};
    auto movie = movie_from(probed);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->video.index, 1);
    EXPECT_FALSE(movie->video.may_be_one_frame);
    movie = movie_from(probed, {1});
    ASSERT_TRUE(movie);
    EXPECT_TRUE(movie->video.may_be_one_frame);
}

TEST(Movie, IsShownInSquarePixelsAndUpright) {
    json stream = video_stream(0);
    stream["sample_aspect_ratio"] = "64:45";
    stream["side_data_list"] = {{{"rotation", -90}}};
    const auto movie = movie_from(movie_of(json::array({stream})));
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->video.stored, (Size{720, 576}));
    EXPECT_EQ(movie->video.shown, (Size{576, 1024}));
}

TEST(Movie, HasTheColoursOfItsFileAndTheUsualOnesWhereTheyAreUnspecified) {
    json stream = video_stream(0);
    stream["color_range"] = "tv";
    stream["color_space"] = "bt2020nc";
    stream["color_primaries"] = "unknown";
    stream["color_transfer"] = "smpte2084";
    const auto movie = movie_from(movie_of(json::array({stream})));
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->video.colour, (Colour{"tv", "bt2020nc", "bt2020", "smpte2084"}));
    EXPECT_TRUE(movie->video.needs_colour_conversion);
}

TEST(Movie, TakesReservedColoursForUnspecifiedOnes) {
    json stream = video_stream(0);
    for (const char* key : {"color_space", "color_primaries", "color_transfer"}) {
        stream[key] = "reserved";
    }
    const VideoStream video = movie_from(movie_of(json::array({stream})))->video;
    EXPECT_EQ(video.colour, assumed_colour({}, video.pixel_format, video.stored));
    EXPECT_FALSE(video.needs_colour_conversion);
}

TEST(Movie, HasAVariableRateWhereTheAverageIsNotTheBase) {
    json stream = video_stream(0);
    EXPECT_TRUE(has_variable_rate(movie_from(movie_of(json::array({stream})))->video));
    stream["r_frame_rate"] = "25/1";
    EXPECT_FALSE(has_variable_rate(movie_from(movie_of(json::array({stream})))->video));
}

TEST(Movie, HasAVariableRateWhereItsStepsAreUneven) {
    json stream = video_stream(0);
    stream["r_frame_rate"] = "25/1";
    stream["has_uneven_steps"] = 1;
    EXPECT_TRUE(has_variable_rate(movie_from(movie_of(json::array({stream})))->video));
}

TEST(Movie, HasNoRateAboveItsBaseRate) {
    json stream = video_stream(0);
    stream["r_frame_rate"] = "25/1";
    stream["avg_frame_rate"] = "50/1";
    EXPECT_EQ(frame_rate(movie_from(movie_of(json::array({stream})))->video), 25);
    stream["avg_frame_rate"] = "2505/100";
    EXPECT_EQ(frame_rate(movie_from(movie_of(json::array({stream})))->video), 25.05);
}

TEST(Movie, TakesTheBaseRateAndTheStreamsLengthWhereTheBetterFactsAreMissing) {
    json stream = video_stream(0);
    stream["avg_frame_rate"] = "0/0";
    json probed = movie_of(json::array({stream}));
    probed["format"].erase("duration");
    const auto movie = movie_from(probed);
    ASSERT_TRUE(movie);
    EXPECT_EQ(frame_rate(movie->video), 50);
    EXPECT_EQ(movie->duration, 7.0);
}

TEST(Movie, HasNoLengthWhereTheHeaderSaysNone) {
    json stream = video_stream(0);
    stream.erase("duration");
    json probed = movie_of(json::array({stream}));
    probed["format"]["duration"] = "0.000000";
    EXPECT_FALSE(movie_from(probed)->duration);
}

TEST(Movie, LeavesUnknownFactsOpen) {
    json stream = video_stream(0);
    for (const char* key : {"duration", "avg_frame_rate", "r_frame_rate", "time_base"}) {
        stream.erase(key);
    }
    const auto movie = movie_from({{"streams", json::array({stream})}});
    ASSERT_TRUE(movie);
    EXPECT_FALSE(movie->duration);
    EXPECT_FALSE(movie->bit_rate);
    EXPECT_EQ(frame_rate(movie->video), 0);
}

TEST(Movie, IsNotUpsetByWrongTypes) {
    EXPECT_FALSE(movie_from(json::array({1})));
    EXPECT_FALSE(movie_from({{"streams", "none"}}));
    EXPECT_FALSE(movie_from({{"streams", {1, nullptr, {{"codec_type", 5}}}}}));
}

}  // namespace
}  // namespace bundle
