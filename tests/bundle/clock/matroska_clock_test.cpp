#include "clock/matroska_clock.h"

#include <gtest/gtest.h>

#include <string>

#include "clock/ebml.h"
#include "core/files.h"

namespace bundle {
namespace {

using namespace std::string_literals;

/// An element of less than 127 bytes.
std::string element(const std::string& id, const std::string& content) {
    return id + static_cast<char>(0x80 | content.size()) + content;
}

std::string time_of(std::size_t value) {
    return element("\xE7", {static_cast<char>(value >> 8), static_cast<char>(value)});
}

std::string relative(int ticks) {
    return {static_cast<char>(ticks >> 8), static_cast<char>(ticks)};
}

std::string simple(int ticks) {
    return element("\xA3", "\x81" + relative(ticks) + "\x80picture");
}

std::string group(int ticks) {
    return element("\xA0",
                   element("\x9B", "\x01") + element("\xA1", "\x82" + relative(ticks) + "\0text"s));
}

std::string cluster(const std::string& content) {
    return element("\x1F\x43\xB6\x75", content);
}

/// A cluster as it is handed on.
std::string open_cluster(std::size_t time, const std::string& content) {
    return "\x1F\x43\xB6\x75\x01\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xE7\x88\0\0\0\0\0\0"s +
           static_cast<char>(time >> 8) + static_cast<char>(time) + content;
}

const std::string kHead = element("\x1A\x45\xDF\xA3", "matroska");
const std::string kInfo = element("\x15\x49\xA9\x66", element("\x2A\xD7\xB1", "\x0F\x42\x40"));
const std::string kCues = element("\x1C\x53\xBB\x6B", "index");

std::string movie(const std::string& clusters) {
    return kHead + "\x18\x53\x80\x67\x01\0\0\0\0\0\x12\x34"s + kInfo + clusters + kCues;
}

std::string result(const std::string& clusters) {
    return kHead + "\x18\x53\x80\x67\x01\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + kInfo + clusters;
}

std::string handed_on(const std::string& bytes) {
    const auto file = nameless_file(bytes);
    std::string all;
    EvenClock clock(60'000);
    hand_on_matroska(file->get(), static_cast<std::int64_t>(bytes.size()), clock,
                     [&](std::string_view piece) {
                         all += piece;
                         return true;
                     });
    return all;
}

TEST(Ebml, ReadsTheHeadOfAnElement) {
    const auto found = element_at("x\x1F\x43\xB6\x75\x40\x02yy", 1);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, 0x1F43B675U);
    EXPECT_EQ(found->head, 6U);
    EXPECT_EQ(found->size, 2);
    EXPECT_FALSE(found->has_unknown_size);
    EXPECT_TRUE(element_at("\xA3\xFF", 0)->has_unknown_size);
    EXPECT_FALSE(element_at("\x1F\x43\xB6", 0));
    EXPECT_FALSE(element_at("\xA3\x40", 0));
    EXPECT_FALSE(element_at("\0\0\0\0\0\0"s, 0));
    EXPECT_FALSE(element_at("", 0));
}

TEST(MatroskaClock, FindsTheTimeOfACluster) {
    const std::string checksum = element("\xBF", "1234");
    const std::string bytes = "\x1F\x43\xB6\x75zz" + cluster(checksum + time_of(4500));
    const auto point = first_matroska_time(bytes, 2);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->place, 6);
    EXPECT_DOUBLE_EQ(point->seconds, 9);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_FALSE(first_matroska_time(std::string_view(bytes).substr(0, size), 2));
    }
}

TEST(MatroskaClock, ReadsTheLengthOfATick) {
    EXPECT_DOUBLE_EQ(matroska_tick(movie("")), 1);
    EXPECT_DOUBLE_EQ(matroska_tick(element("\x2A\xD7\xB1", "\x01\x86\xA0")), 0.1);
    EXPECT_DOUBLE_EQ(matroska_tick(""), 1);
}

TEST(MatroskaClock, HandsOnTheTimesOfAMovieWithoutJumps) {
    EXPECT_EQ(handed_on(movie(cluster(time_of(500) + simple(0) + simple(40)))),
              result(open_cluster(500, simple(0) + simple(40))));
}

TEST(MatroskaClock, MakesOneMovieOfJoinedOnes) {
    const std::string blocks = simple(0) + group(10) + simple(3000) + simple(3040);
    const std::string part = movie(cluster(time_of(0) + blocks));
    EXPECT_EQ(handed_on(part + part), result(open_cluster(0, blocks) + open_cluster(3080, blocks)));
}

TEST(MatroskaClock, GoesOnBehindDamage) {
    const std::string blocks = simple(0) + simple(3000) + simple(3040);
    const std::string part = cluster(time_of(0) + blocks);
    EXPECT_EQ(handed_on(movie(part + "\0damage\xA3"s + part)),
              result(open_cluster(0, blocks) + open_cluster(3080, blocks)));
}

TEST(MatroskaClock, ComesToAnEndWhereverTheMovieDoes) {
    const std::string whole = movie(cluster(time_of(0) + simple(0) + group(40)));
    const std::size_t size = handed_on(whole).size();
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        EXPECT_LE(handed_on(whole.substr(0, cut)).size(), size);
    }
}

}  // namespace
}  // namespace bundle
