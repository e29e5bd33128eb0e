#include "clock/even_clock.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

constexpr int kVideo = 9;
constexpr int kAudio = 8;
constexpr std::int64_t kGap = 60'000;

/// A clock that has seen a movie of two streams from `start` on: pictures of 40 ms, audio of 20.
EvenClock clock_after(std::int64_t start, std::int64_t length) {
    EvenClock clock(kGap);
    for (std::int64_t time = start; time < start + length; time += 20) {
        if ((time - start) % 40 == 0) {
            clock.even(kVideo, time);
        }
        clock.even(kAudio, time);
    }
    return clock;
}

TEST(EvenClock, LeavesAMovieWithoutJumpsAlone) {
    EvenClock clock(kGap);
    for (const std::int64_t time : {3'600'000, 3'600'040, 3'600'120, 3'600'080, 3'650'000}) {
        EXPECT_EQ(clock.even(kVideo, time), time);
    }
}

TEST(EvenClock, LetsARestartFollow) {
    EvenClock clock = clock_after(0, 4000);
    EXPECT_EQ(clock.end(), 4000);
    EXPECT_EQ(clock.even(kVideo, 0), 4000);
    EXPECT_EQ(clock.even(kAudio, 10), 4010);
    EXPECT_EQ(clock.even(kVideo, 40), 4040);
}

TEST(EvenClock, ClosesAnHourForward) {
    EvenClock clock = clock_after(0, 4000);
    EXPECT_EQ(clock.even(kAudio, 3'604'000), 4000);
    EXPECT_EQ(clock.even(kVideo, 3'604'015), 4015);
}

TEST(EvenClock, TakesAnEarlierEndForPartOfTheJump) {
    EvenClock clock = clock_after(0, 4000);
    clock.even(kVideo, 4500);
    EXPECT_EQ(clock.even(kAudio, 0), 4540);
    EXPECT_EQ(clock.even(kVideo, 7), 4547);
}

TEST(EvenClock, KnowsAnEarlierPacketBehindTheJump) {
    EvenClock clock = clock_after(0, 4000);
    EXPECT_EQ(clock.even(kVideo, 3'600'000), 4000);
    EXPECT_EQ(clock.even(kAudio, 4000), 4000);
    EXPECT_EQ(clock.even(kAudio, 3'600'020), 4020);
    EXPECT_EQ(clock.even(kVideo, 3'600'040), 4040);
}

TEST(EvenClock, MovesAStreamThatWasSilentForLong) {
    EvenClock clock(kGap);
    constexpr int kText = 3;
    clock.even(kText, 0);
    for (std::int64_t time = 0; time < 100'000; time += 40) {
        clock.even(kVideo, time);
    }
    EXPECT_EQ(clock.even(kText, 99'000), 99'000);
    EXPECT_EQ(clock.even(kVideo, 0), 100'000);
    EXPECT_EQ(clock.even(kText, 30), 100'030);
}

TEST(EvenClock, ClosesNoGapWhereNoneIsTooLong) {
    EvenClock clock(2'147'483'647);
    clock.even(kVideo, 0);
    EXPECT_EQ(clock.even(kVideo, 3'600'000), 3'600'000);
    EXPECT_EQ(clock.even(kVideo, 0), 3'600'000 + 0);
}

}  // namespace
}  // namespace bundle
