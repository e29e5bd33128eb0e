#include "clock/transport_feed.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/files.h"

namespace bundle {
namespace {

using namespace std::string_literals;

constexpr int kTable = 0x1000;

std::string two(int value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string packet(int pid, std::string content, bool begins = true) {
    content.resize(184, '\xFF');
    return "G" + two((begins ? 0x4000 : 0) | pid) + "\x10" + content;
}

std::string section(char table, const std::string& content, bool is_in_force = true) {
    const int length = static_cast<int>(5 + content.size() + 4);
    return "\0"s + table + two(0xB000 | length) + two(1) + (is_in_force ? '\xC1' : '\xC0') +
           "\0\0"s + content + "sum.";
}

std::string programmes() {
    return packet(0, section(0, two(0) + two(0xE010) + two(1) + two(0xE000 | kTable)));
}

std::string programme(const std::vector<int>& pids, bool is_in_force = true) {
    std::string content = two(0xE100) + two(0xF000);
    for (const int pid : pids) {
        content += '\2' + two(0xE000 | pid) + two(0xF002) + "xy";
    }
    return packet(kTable, section(2, content, is_in_force));
}

std::string content(int pid, int count = 8) {
    std::string packets;
    for (int at = 0; at < count; ++at) {
        packets += packet(pid, "content", false);
    }
    return packets;
}

std::string handed_on(const std::string& movie) {
    const auto file = nameless_file(movie);
    std::string all;
    hand_on_transport(file->get(), [&](std::string_view piece) {
        all += piece;
        return true;
    });
    return all;
}

const std::string kFirst = programmes() + programme({0x101, 0x102}) + content(0x101);

TEST(TransportFeed, HandsOnAStreamWithoutChangesAsItIs) {
    const std::string again = programmes() + programme({0x101, 0x102}) + content(0x102);
    for (const std::string& movie :
         {kFirst + again, kFirst + again.substr(0, again.size() - 100), "xyz" + kFirst + again,
          kFirst + "noise" + again, kFirst + programme({0x201}, false) + again, ""s, "G"s}) {
        EXPECT_EQ(handed_on(movie), movie);
    }
}

TEST(TransportFeed, EndsTheFormerStreamsWhereTheirNumbersChange) {
    const std::string second = programme({0x201, 0x102}) + content(0x201);
    const std::string all = handed_on(kFirst + programmes() + second);
    ASSERT_EQ(all.size(), kFirst.size() + 2 * 188 + second.size());
    const std::string end = all.substr(kFirst.size() + 188, 188);
    EXPECT_EQ(all, kFirst + programmes() + end + second);
    EXPECT_EQ(end.substr(0, 3), "G" + two(0x4101));
    EXPECT_EQ(end.substr(end.size() - 9), "\0\0\1\xE0\0\0\x80\0\0"s);
    EXPECT_EQ(static_cast<std::size_t>(static_cast<unsigned char>(end[4])), 188U - 5 - 9);
}

TEST(TransportFeed, KeepsTheSizeOfThePackets) {
    const std::string short_packets = kFirst + programmes() + programme({0x102}) + content(0x102);
    std::string movie;
    for (std::size_t at = 0; at < short_packets.size(); at += 188) {
        movie += "time" + short_packets.substr(at, 188);
    }
    const std::string all = handed_on(movie);
    ASSERT_EQ(all.size(), movie.size() + 192);
    const std::size_t place = (kFirst.size() / 188 + 1) * 192 + 4;
    EXPECT_EQ(all.substr(0, place), movie.substr(0, place));
    EXPECT_EQ(all.substr(place, 3), "G" + two(0x4101));
    EXPECT_EQ(all.substr(place + 192), movie.substr(place));
}

TEST(TransportFeed, EndsWithTheReader) {
    const auto file = nameless_file(kFirst + programme({0x201}) + content(0x201, 5000));
    int count = 0;
    hand_on_transport(file->get(), [&count](std::string_view) { return ++count < 3; });
    EXPECT_EQ(count, 3);
}

}  // namespace
}  // namespace bundle
