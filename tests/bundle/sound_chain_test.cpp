#include "sound_chain.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

const std::string kStereo =
    "aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,";
const std::string kFillGaps = "aresample=async=50:min_comp=0.01:min_hard_comp=0.015";

TEST(SoundChain, MixesTheChannelsThatHaveAnOrder) {
    EXPECT_EQ(sound_filters({1, "ac3", 48000, 6, true}), kStereo + kFillGaps);
    EXPECT_EQ(sound_filters({1, "ac3", 48000, 16, true}), kStereo + kFillGaps);
    for (int channels = 1; channels <= 8; ++channels) {
        EXPECT_EQ(sound_filters({1, "pcm_s16le", 48000, channels, false}), kStereo + kFillGaps);
    }
}

TEST(SoundChain, TakesTheFirstTwoOfNineChannelsWithoutNames) {
    EXPECT_EQ(sound_filters({1, "pcm_s16le", 48000, 9, false}),
              "pan=stereo|c0=c0|c1=c1," + kFillGaps);
}

TEST(SoundChain, FillsOnlyLargeGapsOfJitteryTimes) {
    EXPECT_EQ(sound_filters({1, "aac", 48000, 2, true, true}), kStereo + "aresample=async=1");
}

}  // namespace
}  // namespace bundle
