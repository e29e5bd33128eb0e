#include "clock/transport_stream.h"

#include <gtest/gtest.h>

#include <string>

namespace bundle {
namespace {

/// The beginning of a stream of packets of this size, of which the first one is cut by `cut` bytes.
std::string packets(std::size_t size, std::size_t cut = 0) {
    std::string head;
    while (head.size() < kTransportHead + cut) {
        head += '\x47' + std::string(size - 1, '\xFF');
    }
    return head.substr(cut, kTransportHead);
}

TEST(TransportStream, HasPacketsOfAUsualSize) {
    for (const std::size_t size : {188U, 192U, 204U}) {
        EXPECT_TRUE(looks_like_transport_stream(packets(size))) << size;
    }
    EXPECT_FALSE(looks_like_transport_stream(packets(190)));
}

TEST(TransportStream, MayBeginInTheMiddleOfAPacket) {
    EXPECT_TRUE(looks_like_transport_stream(packets(188, 1)));
    EXPECT_TRUE(looks_like_transport_stream(packets(204, 203)));
}

TEST(TransportStream, IsNotFoundInLessThanTenPackets) {
    EXPECT_FALSE(looks_like_transport_stream(""));
    EXPECT_FALSE(looks_like_transport_stream("G"));
    EXPECT_FALSE(looks_like_transport_stream(packets(188).substr(0, 9 * 188)));
    EXPECT_TRUE(looks_like_transport_stream(packets(188).substr(0, 9 * 188 + 1)));
}

TEST(TransportStream, HasPacketsOfItsStreamsOnly) {
    std::string piece = packets(192, 100);
    piece[92 + 5 * 192 + 1] = '\x41';
    piece[92 + 5 * 192 + 2] = '\x02';
    EXPECT_TRUE(has_packet_of(piece, 0x1FFF));
    EXPECT_TRUE(has_packet_of(piece, 0x102));
    EXPECT_FALSE(has_packet_of(piece, 0x103));
    EXPECT_FALSE(has_packet_of("", 0x1FFF));
}

TEST(TransportStream, IsNotFoundInOtherFiles) {
    EXPECT_FALSE(looks_like_transport_stream(std::string(kTransportHead, '\0')));
    std::string broken = packets(188);
    broken[5 * 188] = 'x';
    EXPECT_FALSE(looks_like_transport_stream(broken));
}

}  // namespace
}  // namespace bundle
