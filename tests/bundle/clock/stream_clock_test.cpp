#include "clock/stream_clock.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

constexpr std::int64_t kSize = 1'000'000'000;

/// The length of a movie of 1000 s whose clock shows `clock` of the seconds played.
std::optional<double> length_by(const std::function<double(double)>& clock) {
    return length_without_jumps(kSize, [&](std::int64_t place) {
        return std::optional(ClockPoint{place, clock(static_cast<double>(place) / 1e6)});
    });
}

TEST(StreamClock, TellsNothingWhereItDoesNotJump) {
    EXPECT_EQ(length_by([](double played) { return played; }), std::nullopt);
    EXPECT_EQ(length_by([](double played) { return played + 3600; }), std::nullopt);
    EXPECT_EQ(
        length_by([](double played) { return played < 500 ? played : 500 + (played - 500) / 9; }),
        std::nullopt);
}

TEST(StreamClock, LeavesOutJumps) {
    const auto forward = [](double played) { return played < 300 ? played : played + 3600; };
    const auto back = [](double played) { return played < 700 ? played : played - 690; };
    const auto again = [](double played) { return played < 500 ? played : played - 500; };
    for (const std::function<double(double)>& clock :
         {std::function<double(double)>(forward), std::function<double(double)>(back),
          std::function<double(double)>(again)}) {
        const auto length = length_by(clock);
        ASSERT_TRUE(length);
        EXPECT_NEAR(*length, 1000, 1);
    }
}

TEST(StreamClock, TellsNothingWithoutPoints) {
    EXPECT_EQ(length_without_jumps(kSize, [](std::int64_t) { return std::optional<ClockPoint>(); }),
              std::nullopt);
    EXPECT_EQ(length_of_stream("/nonexistent").without_jumps, std::nullopt);
}

TEST(StreamClock, ReadsTheTimesOfPictures) {
    // 0x1 12345678 ticks: 3 bits, 15 bits, 15 bits, each before a marker.
    const std::string packet("\0\0\1\xE0\0\0\x80\x80\x05\x21\0\x05\xBF\x21", 14);
    int pid = -1;
    const auto point = first_time_in("xx" + packet, pid);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->place, 2);
    EXPECT_NEAR(point->seconds, (2.0 * 32768 + 0x5F90) / 90000, 1e-6);
    for (std::size_t size = 0; size < packet.size(); ++size) {
        EXPECT_FALSE(first_time_in(packet.substr(0, size), pid));
    }
}

TEST(StreamClock, ReadsTheTimesOfPicturesInMpeg1) {
    const std::string start("\0\0\1\xE0\0\0", 6);
    const std::string time("\x21\0\x05\xBF\x21", 5);
    for (const char* before : {"", "\xFF\xFF", "\x60\x20", "\xFF\x60\x20"}) {
        int pid = -1;
        const auto point = first_time_in(start + before + time, pid);
        ASSERT_TRUE(point) << before;
        EXPECT_NEAR(point->seconds, (2.0 * 32768 + 0x5F90) / 90000, 1e-6);
    }
    int pid = -1;
    EXPECT_FALSE(first_time_in(start + "\x0F" + time, pid));
}

}  // namespace
}  // namespace bundle
