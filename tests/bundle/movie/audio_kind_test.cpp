#include "movie/sound_kind.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

SoundKind kind_of(std::initializer_list<const char*> marks) {
    json disposition{{"default", 1}, {"comment", 0}, {"dub", 0}};
    for (const char* mark : marks) {
        disposition[mark] = 1;
    }
    return sound_kind(disposition);
}

TEST(SoundKind, IsDialogueUnlessItIsMarked) {
    EXPECT_EQ(kind_of({}), SoundKind::kDialogue);
    EXPECT_EQ(kind_of({"original"}), SoundKind::kDialogue);
    EXPECT_EQ(sound_kind(json()), SoundKind::kDialogue);
}

TEST(SoundKind, FollowsTheMarks) {
    EXPECT_EQ(kind_of({"dub"}), SoundKind::kDubbed);
    EXPECT_EQ(kind_of({"hearing_impaired"}), SoundKind::kClearer);
    EXPECT_EQ(kind_of({"visual_impaired"}), SoundKind::kDescribed);
    EXPECT_EQ(kind_of({"descriptions"}), SoundKind::kDescribed);
    EXPECT_EQ(kind_of({"comment"}), SoundKind::kAside);
    EXPECT_EQ(kind_of({"karaoke"}), SoundKind::kAside);
    EXPECT_EQ(kind_of({"clean_effects"}), SoundKind::kAside);
}

TEST(SoundKind, IsTheWorstOfSeveralMarks) {
    EXPECT_EQ(kind_of({"dub", "comment"}), SoundKind::kAside);
    EXPECT_EQ(kind_of({"original", "visual_impaired"}), SoundKind::kDescribed);
}

}  // namespace
}  // namespace bundle
