#include "movie/stream_choice.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

StreamFacts picture(std::int64_t pixels = 100) {
    StreamFacts facts;
    facts.pixels = pixels;
    return facts;
}

StreamFacts default_picture() {
    StreamFacts facts = picture();
    facts.is_default = true;
    return facts;
}

StreamFacts still() {
    StreamFacts facts = default_picture();
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

TEST(StreamChoice, TakesTheFirstPictureOfEquals) {
    EXPECT_EQ(choose_picture({picture(), picture()}), 0U);
}

TEST(StreamChoice, TakesTheDefaultPictureAndThenTheLargest) {
    EXPECT_EQ(choose_picture({picture(), picture(400), picture(300)}), 1U);
    EXPECT_EQ(choose_picture({picture(400), default_picture()}), 1U);
}

TEST(StreamChoice, NeverTakesAStillPictureOrOneWithoutADecoder) {
    EXPECT_EQ(choose_picture({still(), picture()}), 1U);
    EXPECT_EQ(choose_picture({undecodable(default_picture()), picture()}), 1U);
    EXPECT_EQ(choose_picture({still(), undecodable(picture())}), std::nullopt);
    EXPECT_EQ(choose_picture({}), std::nullopt);
}

TEST(StreamChoice, TakesAPictureThatMovesBeforeOneThatMayNot) {
    EXPECT_EQ(choose_picture({with_packets(default_picture(), 1), with_packets(picture(), 2)}), 1U);
    EXPECT_EQ(choose_picture({with_packets(picture(), 1)}), 0U);
}

TEST(StreamChoice, CallsOnlyASampleWithTwoFramesMoving) {
    EXPECT_TRUE(may_be_one_frame(with_packets(picture(), 0)));
    EXPECT_TRUE(may_be_one_frame(with_packets(picture(), 1)));
    EXPECT_FALSE(may_be_one_frame(with_packets(picture(), 2)));
    EXPECT_FALSE(may_be_one_frame(picture()));
}

TEST(StreamChoice, TakesTheDefaultSoundElseTheFirstThatCanBeDecoded) {
    const StreamFacts sound;
    const StreamFacts default_sound = default_picture();
    EXPECT_EQ(choose_sound({sound, default_sound, default_sound}), 1U);
    EXPECT_EQ(choose_sound({undecodable(sound), sound, undecodable(default_sound)}), 1U);
    EXPECT_EQ(choose_sound({undecodable(sound)}), std::nullopt);
}

TEST(StreamChoice, TakesTheBestKindOfSoundAndOfEqualsTheDefaultOne) {
    StreamFacts comment = default_picture();
    comment.sound = SoundKind::kAside;
    StreamFacts dubbed = default_picture();
    dubbed.sound = SoundKind::kDubbed;
    EXPECT_EQ(choose_sound({comment, StreamFacts(), default_picture()}), 2U);
    EXPECT_EQ(choose_sound({comment, dubbed, StreamFacts()}), 2U);
    EXPECT_EQ(choose_sound({comment, dubbed, undecodable(StreamFacts())}), 1U);
    EXPECT_EQ(choose_sound({comment}), 0U);
}

}  // namespace
}  // namespace bundle
