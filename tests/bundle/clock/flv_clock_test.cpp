#include "clock/flv_clock.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/files.h"

namespace bundle {
namespace {

using namespace std::string_literals;

const std::string kHead = "FLV\1\5\0\0\0\x09\0\0\0\0"s;
const std::string kPicture = "\x22picture"s;  // H.263
const std::string kSound = "\x2Fsound"s;      // MP3
const std::string kSetup = "\x17\0setup"s;    // H.264, decoder configuration

std::string number(std::size_t value, int bytes) {
    std::string text;
    for (int byte = bytes - 1; byte >= 0; --byte) {
        text += static_cast<char>(value >> 8 * byte);
    }
    return text;
}

std::string tag(int kind, std::size_t time, const std::string& content) {
    return static_cast<char>(kind) + number(content.size(), 3) + number(time & 0xFFFFFF, 3) +
           number(time >> 24, 1) + "\0\0\0"s + content + number(11 + content.size(), 4);
}

std::string handed_on(const std::string& movie) {
    const auto file = nameless_file(movie);
    std::string all;
    EvenClock clock(60'000);
    hand_on_flv(file->get(), clock, [&](std::string_view piece) {
        all += piece;
        return true;
    });
    return all;
}

TEST(FlvClock, FindsTheTimeOfAPicture) {
    const std::string bytes =
        "xx\x09yy"s + tag(8, 5, kSound) + tag(9, 6, kSetup) + tag(9, 0x12345678, kPicture);
    const auto point = first_flv_time(bytes);
    ASSERT_TRUE(point);
    EXPECT_EQ(bytes.substr(static_cast<std::size_t>(point->place)), tag(9, 0x12345678, kPicture));
    EXPECT_DOUBLE_EQ(point->seconds, 0x12345678 / 1000.0);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_FALSE(first_flv_time(std::string_view(bytes).substr(0, size)));
    }
}

TEST(FlvClock, HandsOnAMovieWithoutJumpsAsItIs) {
    const std::string movie = kHead + tag(18, 0, "script") + tag(9, 0, kSetup) +
                              tag(9, 0, kPicture) + tag(8, 10, kSound) + tag(9, 40, kPicture);
    EXPECT_EQ(handed_on(movie), movie);
}

TEST(FlvClock, MakesOneMovieOfJoinedOnes) {
    const std::string part = tag(9, 0, kPicture) + tag(9, 3000, kPicture) + tag(9, 3040, kPicture);
    const std::string movie = kHead + tag(18, 0, "script") + part;
    EXPECT_EQ(handed_on(movie + movie),
              movie + tag(9, 3080, kPicture) + tag(9, 6080, kPicture) + tag(9, 6120, kPicture));
}

TEST(FlvClock, GivesASetupTheTimeOfWhatIsBeforeIt) {
    const std::string part = kHead + tag(9, 3000, kPicture) + tag(9, 3040, kPicture);
    EXPECT_EQ(handed_on(part + tag(9, 0, kSetup) + tag(9, 3080, kPicture)),
              part + tag(9, 3040, kSetup) + tag(9, 3080, kPicture));
}

TEST(FlvClock, GoesOnBehindDamage) {
    const std::string part = kHead + tag(9, 3000, kPicture) + tag(9, 3040, kPicture);
    const std::string broken = tag(9, 80, kPicture).substr(0, 14);
    EXPECT_EQ(handed_on(part + broken + kHead + tag(9, 0, kPicture)),
              part + tag(9, 3080, kPicture));
}

TEST(FlvClock, ComesToAnEndWhereverTheMovieDoes) {
    const std::string movie = kHead + tag(9, 0, kPicture) + tag(8, 40, kSound);
    for (std::size_t size = 0; size < movie.size(); ++size) {
        EXPECT_LE(handed_on(movie.substr(0, size)).size(), movie.size());
    }
}

}  // namespace
}  // namespace bundle
