#include "ffmpeg/audio_filters.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

const std::string kStereo =
    "aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,";
const std::string kFillGaps = "aresample=async=50:min_comp=0.01:min_hard_comp=0.015";

TEST(AudioFilters, MixesTheChannelsThatHaveAnOrder) {
    EXPECT_EQ(audio_filters({1, "ac3", 48000, 6, true}), kStereo + kFillGaps);
    EXPECT_EQ(audio_filters({1, "ac3", 48000, 16, true}), kStereo + kFillGaps);
    for (int channels = 1; channels <= 8; ++channels) {
        EXPECT_EQ(audio_filters({1, "pcm_s16le", 48000, channels, false}), kStereo + kFillGaps);
    }
}

TEST(AudioFilters, TakesTheFirstTwoOfNineChannelsWithoutNames) {
    EXPECT_EQ(audio_filters({1, "pcm_s16le", 48000, 9, false}),
              "pan=stereo|c0=c0|c1=c1," + kFillGaps);
}

TEST(AudioFilters, FillsOnlyLargeGapsOfJitteryTimes) {
    EXPECT_EQ(audio_filters({1, "aac", 48000, 2, true, true}), kStereo + "aresample=async=1");
}

TEST(AudioFilters, CountsTheSamplesWhereTimesAreFalse) {
    AudioStream audio{1, "mp3", 44100, 2};
    audio.has_false_times = true;
    EXPECT_EQ(audio_filters(audio), "asetpts=STARTPTS+N/SR/TB," + kStereo + "aresample=async=1");
}

TEST(AudioFilters, TakesAStreamThroughTheFilters) {
    const AudioStream audio{3, "aac", 48000, 2};
    EXPECT_EQ(audio_source(audio),
              (std::vector<std::string>{"-map", "0:3", "-af", audio_filters(audio)}));
}

TEST(AudioFilters, MakesTwoSidesOfTwoStreams) {
    AudioStream audio{1, "pcm_s16le", 48000, 1};
    audio.right = 2;
    const std::string chain = "[0:1]pan=mono|c0=c0," + kFillGaps + "[left];[0:2]pan=mono|c0=c0," +
                              kFillGaps +
                              "[right];[left][right]join=inputs=2:channel_layout=stereo:"
                              "map=0.0-FL|1.0-FR[audio]";
    EXPECT_EQ(audio_source(audio),
              (std::vector<std::string>{"-filter_complex", chain, "-map", "[audio]"}));
}

}  // namespace
}  // namespace bundle
