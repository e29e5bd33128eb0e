#include "subtitles/cue_track.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace bundle {

static void PrintTo(const Cue& cue, std::ostream* stream) {
    *stream << cue.start_ms << "-" << cue.end_ms << " " << cue.text;
}

namespace {

using Cues = std::vector<Cue>;

TEST(OneAtATime, PutsCuesInTheOrderOfTheirTimes) {
    EXPECT_EQ(one_at_a_time({{3000, 4000, "b"}, {1000, 2000, "a"}}),
              (Cues{{1000, 2000, "a"}, {3000, 4000, "b"}}));
}

TEST(OneAtATime, LeavesCuesThatTouchEachOtherAsTheyAre) {
    const Cues cues{{1000, 2000, "a"}, {2000, 2010, "a"}, {2010, 4000, "b"}};
    EXPECT_EQ(one_at_a_time(cues), cues);
}

TEST(OneAtATime, RoundsTimesToHundredths) {
    EXPECT_EQ(one_at_a_time({{1004, 2005, "a"}, {3001, 3002, "b"}}),
              (Cues{{1000, 2010, "a"}, {3000, 3010, "b"}}));
}

TEST(OneAtATime, ShowsALongCueAroundAndTogetherWithAShortOneInIt) {
    EXPECT_EQ(one_at_a_time({{1000, 10'000, "long"}, {2000, 3000, "inner"}}),
              (Cues{{1000, 2000, "long"}, {2000, 3000, "long\ninner"}, {3000, 10'000, "long"}}));
}

TEST(OneAtATime, ShowsCuesThatBeginTogetherTogether) {
    EXPECT_EQ(one_at_a_time({{1000, 2000, "a"}, {1000, 3000, "b"}}),
              (Cues{{1000, 2000, "a\nb"}, {2000, 3000, "b"}}));
    EXPECT_EQ(one_at_a_time({{1000, 2000, "a"}, {1000, 2000, "b"}}), (Cues{{1000, 2000, "a\nb"}}));
}

TEST(OneAtATime, EndsACueThatHardlyOverlapsWithTheNextOneWhereThatBegins) {
    EXPECT_EQ(one_at_a_time({{1000, 2090, "a"}, {2000, 3000, "b"}}),
              (Cues{{1000, 2000, "a"}, {2000, 3000, "b"}}));
    EXPECT_EQ(one_at_a_time({{1000, 2100, "a"}, {2000, 3000, "b"}}),
              (Cues{{1000, 2000, "a"}, {2000, 2100, "a\nb"}, {2100, 3000, "b"}}));
}

TEST(OneAtATime, GivesACueWithoutLengthSomeTime) {
    EXPECT_EQ(one_at_a_time({{1000, 500, "a"}, {2000, 2000, "b"}, {9000, 9500, "c"}}),
              (Cues{{1000, 2000, "a"}, {2000, 4000, "b"}, {9000, 9500, "c"}}));
}

TEST(OneAtATime, ShowsTheEightThatBeganLast) {
    Cues cues;
    for (int at = 0; at < 10; ++at) {
        cues.push_back({1000 * at, 20'000, std::to_string(at)});
    }
    EXPECT_EQ(one_at_a_time(cues).back(), (Cue{9000, 20'000, "2\n3\n4\n5\n6\n7\n8\n9"}));
}

TEST(OneAtATime, StaysWithinItsLimitsWhenThousandsOverlap) {
    constexpr int kMany = 20'000;
    const std::string line(4000, 'x');
    Cues cues;
    for (int at = 0; at < kMany; ++at) {
        cues.push_back({10 * at, 10'000'000 - 10 * at, line});
    }
    const Cues track = one_at_a_time(cues);
    std::size_t text = 0;
    for (const Cue& cue : track) {
        text += cue.text.size();
    }
    EXPECT_LE(text, (std::size_t{33} << 20) + kMany * line.size());
    EXPECT_EQ(track[kMany - 1], (Cue{10 * (kMany - 1), 10'000'000 - 10 * (kMany - 1), line}));
}

}  // namespace
}  // namespace bundle
