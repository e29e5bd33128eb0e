#include "movie/stereo_pair.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

const json kMovie{{"format_name", "mov,mp4,m4a,3gp,3g2,mj2"}};

json side() {
    return {{"codec_name", "pcm_s16le"},    {"channels", 1},
            {"sample_rate", "48000"},       {"start_time", "0.000000"},
            {"duration", "2.000000"},       {"disposition", {{"default", 1}}},
            {"tags", {{"language", "eng"}}}};
}

json with(const char* key, const json& value) {
    json stream = side();
    stream[key] = value;
    return stream;
}

TEST(StereoPair, IsTwoMonoTracksOfACamera) {
    EXPECT_TRUE(are_two_sides(kMovie, side(), side()));
    EXPECT_TRUE(are_two_sides({{"format_name", "mxf"}}, side(), side()));
    EXPECT_FALSE(are_two_sides({{"format_name", "matroska,webm"}}, side(), side()));
}

TEST(StereoPair, IsNotMadeOfTracksThatDiffer) {
    EXPECT_FALSE(are_two_sides(kMovie, side(), with("sample_rate", "44100")));
    EXPECT_FALSE(are_two_sides(kMovie, side(), with("start_time", "0.500000")));
    EXPECT_FALSE(are_two_sides(kMovie, side(), with("duration", "1.000000")));
    EXPECT_FALSE(are_two_sides(kMovie, side(), with("disposition", {{"default", 0}})));
    EXPECT_FALSE(are_two_sides(kMovie, side(), with("tags", {{"language", "deu"}})));
    EXPECT_FALSE(
        are_two_sides(kMovie, side(), with("tags", {{"language", "eng"}, {"title", "x"}})));
}

TEST(StereoPair, IsNotMadeOfStereoOrCompressedTracks) {
    const json stereo = with("channels", 2);
    const json compressed = with("codec_name", "aac");
    EXPECT_FALSE(are_two_sides(kMovie, stereo, stereo));
    EXPECT_FALSE(are_two_sides(kMovie, compressed, compressed));
}

}  // namespace
}  // namespace bundle
