#include "movie/stream_choice.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

StreamFacts video(std::int64_t pixels = 100) {
    StreamFacts facts;
    facts.pixels = pixels;
    return facts;
}

StreamFacts default_video() {
    StreamFacts facts = video();
    facts.is_default = true;
    return facts;
}

StreamFacts still() {
    StreamFacts facts = default_video();
    facts.is_still = true;
    return facts;
}

StreamFacts with_packets(StreamFacts facts, int count) {
    facts.packets_seen = count;
    return facts;
}

StreamFacts undecodable(StreamFacts facts) {
    facts.decodable = false;
    return facts;
}

TEST(StreamChoice, TakesTheFirstVideoOfEquals) {
    EXPECT_EQ(choose_video({video(), video()}), 0U);
}

TEST(StreamChoice, TakesTheDefaultVideoAndThenTheLargest) {
    EXPECT_EQ(choose_video({video(), video(400), video(300)}), 1U);
    EXPECT_EQ(choose_video({video(400), default_video()}), 1U);
}

TEST(StreamChoice, NeverTakesAStillPictureOrOneWithoutADecoder) {
    EXPECT_EQ(choose_video({still(), video()}), 1U);
    EXPECT_EQ(choose_video({undecodable(default_video()), video()}), 1U);
    EXPECT_EQ(choose_video({still(), undecodable(video())}), std::nullopt);
    EXPECT_EQ(choose_video({}), std::nullopt);
}

TEST(StreamChoice, TakesAVideoThatMovesBeforeOneThatMayNot) {
    EXPECT_EQ(choose_video({with_packets(default_video(), 1), with_packets(video(), 2)}), 1U);
    EXPECT_EQ(choose_video({with_packets(video(), 1)}), 0U);
}

TEST(StreamChoice, CallsOnlyASampleWithTwoFramesMoving) {
    EXPECT_TRUE(may_be_one_frame(with_packets(video(), 0)));
    EXPECT_TRUE(may_be_one_frame(with_packets(video(), 1)));
    EXPECT_FALSE(may_be_one_frame(with_packets(video(), 2)));
    EXPECT_FALSE(may_be_one_frame(video()));
}

TEST(StreamChoice, TakesTheDefaultAudioElseTheFirstThatCanBeDecoded) {
    const StreamFacts audio;
    const StreamFacts default_audio = default_video();
    EXPECT_EQ(choose_audio({audio, default_audio, default_audio}), 1U);
    EXPECT_EQ(choose_audio({undecodable(audio), audio, undecodable(default_audio)}), 1U);
    EXPECT_EQ(choose_audio({undecodable(audio)}), std::nullopt);
}

TEST(StreamChoice, TakesTheBestKindOfAudioAndOfEqualsTheDefaultOne) {
    StreamFacts comment = default_video();
    comment.audio_kind = AudioKind::kCommentary;
    StreamFacts dubbed = default_video();
    dubbed.audio_kind = AudioKind::kDubbed;
    EXPECT_EQ(choose_audio({comment, StreamFacts(), default_video()}), 2U);
    EXPECT_EQ(choose_audio({comment, dubbed, StreamFacts()}), 2U);
    EXPECT_EQ(choose_audio({comment, dubbed, undecodable(StreamFacts())}), 1U);
    EXPECT_EQ(choose_audio({comment}), 0U);
}

}  // namespace
}  // namespace bundle
