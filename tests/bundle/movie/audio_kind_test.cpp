#include "movie/audio_kind.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

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
