#include "ffmpeg/request.h"

#include <gtest/gtest.h>

#include "bundle/support/samples.h"

namespace bundle {
namespace {

using Words = std::vector<std::string>;

Words without_program(Words words) {
    words.erase(words.begin());
    return words;
}

Words old_line() {
    return without_program(transcode_words("in.avi", "480x270", "out.mp4"));
}

int usage_status(const Words& words) {
    const auto request = parse_transcode(words);
    return request ? 0 : request.failure().status;
}

TEST(TranscodeRequest, ReadsTheProgramsCommandLine) {
    const auto request = parse_transcode(old_line());
    ASSERT_TRUE(request);
    EXPECT_EQ(request->input, "in.avi");
    EXPECT_EQ(request->output, "out.mp4");
    EXPECT_TRUE(request->overwrite);
    EXPECT_EQ(request->width, 480);
    EXPECT_EQ(request->height, 270);
    EXPECT_EQ(request->rate, std::nullopt);
    EXPECT_EQ(request->level, 30);
    EXPECT_EQ(request->reference_frames, 2);
}

TEST(TranscodeRequest, GivesEachOptionItsMeaningToday) {
    const auto request = parse_transcode(old_line());
    ASSERT_TRUE(request);
    const std::vector<Option> video{{"-coder", "0"},
                                    {"-flags:v", "+loop"},
                                    {"-cmp", "+chroma"},
                                    {"-partitions", "+parti8x8+parti4x4+partp8x8+partb8x8"},
                                    {"-motion-est", "hex"},
                                    {"-subq", "6"},
                                    {"-me_range", "16"},
                                    {"-g", "250"},
                                    {"-keyint_min", "25"},
                                    {"-sc_threshold", "40"},
                                    {"-i_qfactor", "0.71"},
                                    {"-b_strategy", "1"},
                                    {"-qcomp", "0.6"},
                                    {"-qmin", "10"},
                                    {"-qmax", "51"},
                                    {"-qdiff", "4"},
                                    {"-bf", "0"},
                                    {"-direct-pred", "1"},
                                    {"-trellis", "1"},
                                    {"-b-pyramid", "1"},
                                    {"-mixed-refs", "1"},
                                    {"-fast-pskip", "1"},
                                    {"-weightp", "0"},
                                    {"-rc-lookahead", "30"},
                                    {"-maxrate:v", "10000000"},
                                    {"-bufsize:v", "10000000"},
                                    {"-crf", "21"}};
    EXPECT_EQ(request->video, video);
    const std::vector<Option> audio{
        {"-c:a", "aac"}, {"-b:a", "128k"}, {"-ac", "2"}, {"-ar", "44100"}};
    EXPECT_EQ(request->audio, audio);
    const std::vector<Option> general{{"-threads", "0"}, {"-f", "ipod"}};
    EXPECT_EQ(request->general, general);
}

TEST(TranscodeRequest, ReadsTheFrameRate) {
    const auto request =
        parse_transcode({"-y", "-i", "in", "-r", "30000/1001", "-s", "480x270", "out"});
    ASSERT_TRUE(request);
    EXPECT_EQ(request->rate, (Rational{30000, 1001}));
}

TEST(TranscodeRequest, TakesNamesThatLookLikeOptions) {
    const auto request = parse_transcode({"-y", "-i", "-s", "-s", "480x270", "-i"});
    ASSERT_TRUE(request);
    EXPECT_EQ(request->input, "-s");
    EXPECT_EQ(request->output, "-i");
}

TEST(TranscodeRequest, TakesTheSidesOfVeryFlatMovies) {
    for (const char* size : {"480x1", "480x0", "1x480", "0x480"}) {
        EXPECT_EQ(usage_status({"-i", "in", "-s", size, "out"}), 0) << size;
    }
}

TEST(TranscodeRequest, KnowsTheOutputOfALineThatItRefuses) {
    EXPECT_EQ(output_of({"-y", "-i", "in", "-new", "1", "-s", "big", "out"}), "out");
    EXPECT_EQ(output_of({"-i", "in", "-s", "big", "out"}), "out");
    for (const Words& words : {Words{}, Words{"-h"}, Words{"-i", "in", "-s", "480x270"},
                               Words{"-y", "-i", "in", "-s", "480x270", ""},
                               Words{"-h", "-h", "-s", "480x270", "out"}}) {
        EXPECT_EQ(output_of(words), std::nullopt);
    }
}

TEST(TranscodeRequest, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(usage_status({"-i", "in", "-vf", "null", "-s", "480x270", "out"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "-flags2", "+speed", "-s", "480x270", "out"}),
              kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "-flags2", "bpyramid", "-s", "480x270", "out"}),
              kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "stray", "-s", "480x270", "out"}), kStatusUsage);
}

TEST(TranscodeRequest, RefusesIncompleteLines) {
    EXPECT_EQ(usage_status({}), kStatusUsage);
    EXPECT_EQ(usage_status({"-y"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-y", "-i", "in"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-y", "-i", "in", "out"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-s", "480x270", "out"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "-s", "480x270"}), kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "-s", "480x270", ""}), kStatusUsage);
    EXPECT_EQ(usage_status({"-i", "in", "-i", "in", "-s", "480x270", "out"}), kStatusUsage);
}

TEST(TranscodeRequest, RefusesImpossibleValues) {
    for (const char* size : {"", "480", "480x", "x270", "0x0", "-2x2", "480x270x", "99999x2"}) {
        EXPECT_EQ(usage_status({"-i", "in", "-s", size, "out"}), kStatusUsage) << size;
    }
    for (const char* rate : {"", "0", "30000/0", "fast"}) {
        EXPECT_EQ(usage_status({"-i", "in", "-r", rate, "-s", "480x270", "out"}), kStatusUsage)
            << rate;
    }
    for (const char* count : {"", "two", "0", "17"}) {
        EXPECT_EQ(usage_status({"-i", "in", "-refs", count, "-s", "480x270", "out"}), kStatusUsage)
            << count;
    }
    for (const char* level : {"", "3.0", "9", "63"}) {
        EXPECT_EQ(usage_status({"-i", "in", "-level", level, "-s", "480x270", "out"}), kStatusUsage)
            << level;
    }
}

}  // namespace
}  // namespace bundle
