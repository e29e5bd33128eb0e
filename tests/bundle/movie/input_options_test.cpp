#include "movie/input_options.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

json probed(const char* format, int sample_rate) {
    return {{"format", {{"format_name", format}}},
            {"streams",
             {{{"codec_type", "video"}},
              {{"codec_type", "audio"},
               {"sample_fmt", "fltp"},
               {"sample_rate", std::to_string(sample_rate)},
               {"channels", 2}}}}};
}

TEST(InputOptions, JoinThePartsOfATransportStreamOnly) {
    EXPECT_EQ(options_by_head("\x1A\x45\xDF\xA3"), InputOptions());
    std::string head;
    for (int packet = 0; packet < 20; ++packet) {
        head += 'G' + std::string(187, '\0');
    }
    EXPECT_EQ(options_by_head(head), (InputOptions{"-merge_pmt_versions", "1"}));
}

TEST(InputOptions, LookFarForSoundThatTheHeaderDoesNotList) {
    EXPECT_TRUE(sound_may_begin_later(probed("mpeg", 0)));
    EXPECT_TRUE(sound_may_begin_later(probed("mpegts", 0)));
    EXPECT_FALSE(sound_may_begin_later(probed("mpegts", 48000)));
    EXPECT_FALSE(sound_may_begin_later(probed("matroska,webm", 0)));
    EXPECT_TRUE(sound_may_begin_later({{"format", {{"format_name", "mpeg"}}}}));
    EXPECT_FALSE(sound_may_begin_later(json::object()));
}

TEST(InputOptions, AreKeptInTheAnswer) {
    json answer = json::object();
    EXPECT_EQ(input_options(answer), InputOptions());
    keep_input_options(answer, look_far({"-merge_pmt_versions", "1"}));
    EXPECT_EQ(input_options(answer), (InputOptions{"-merge_pmt_versions", "1", "-probesize",
                                                   "33554432", "-analyzeduration", "120000000"}));
    answer["input_options"] = {1, "-x"};
    EXPECT_EQ(input_options(answer), InputOptions{"-x"});
}

}  // namespace
}  // namespace bundle
