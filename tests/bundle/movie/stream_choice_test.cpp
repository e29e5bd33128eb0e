#include "movie/stream_choice.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

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

AudioKind kind_of(std::initializer_list<const char*> marks) {
    json disposition{{"default", 1}, {"comment", 0}, {"dub", 0}};
    for (const char* mark : marks) {
        disposition[mark] = 1;
    }
    return audio_kind(disposition);
}

TEST(AudioKind, IsDialogueUnlessItIsMarked) {
    EXPECT_EQ(kind_of({}), AudioKind::kMain);
    EXPECT_EQ(kind_of({"original"}), AudioKind::kMain);
    EXPECT_EQ(audio_kind(json()), AudioKind::kMain);
}

TEST(AudioKind, FollowsTheMarks) {
    EXPECT_EQ(kind_of({"dub"}), AudioKind::kDubbed);
    EXPECT_EQ(kind_of({"hearing_impaired"}), AudioKind::kHearingImpaired);
    EXPECT_EQ(kind_of({"visual_impaired"}), AudioKind::kAudioDescription);
    EXPECT_EQ(kind_of({"descriptions"}), AudioKind::kAudioDescription);
    EXPECT_EQ(kind_of({"comment"}), AudioKind::kCommentary);
    EXPECT_EQ(kind_of({"karaoke"}), AudioKind::kCommentary);
    EXPECT_EQ(kind_of({"clean_effects"}), AudioKind::kCommentary);
}

TEST(AudioKind, IsTheWorstOfSeveralMarks) {
    EXPECT_EQ(kind_of({"dub", "comment"}), AudioKind::kCommentary);
    EXPECT_EQ(kind_of({"original", "visual_impaired"}), AudioKind::kAudioDescription);
}

}  // namespace
}  // namespace bundle
