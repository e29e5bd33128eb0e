#include "clock/transport_stream.h"

#include <array>

namespace bundle {

namespace {

constexpr char kSync = 0x47;
constexpr std::array<std::size_t, 3> kPacketSizes{188, 192, 204};

// Fewer may be coincidence.
constexpr std::size_t kFewestPackets = 10;

bool is_in_step(std::string_view head, std::size_t start, std::size_t size) {
    for (std::size_t at = start; at < head.size(); at += size) {
        if (head[at] != kSync) {
            return false;
        }
    }
    return head.size() > start + (kFewestPackets - 1) * size;
}

}  // namespace

std::optional<PacketLayout> packet_layout(std::string_view head) {
    for (const std::size_t size : kPacketSizes) {
        for (std::size_t start = 0; start < size; ++start) {
            if (is_in_step(head, start, size)) {
                return PacketLayout{start, size};
            }
        }
    }
    return std::nullopt;
}

int packet_id(std::string_view packet) {
    return (static_cast<unsigned char>(packet[1]) & 0x1F) << 8 |
           static_cast<unsigned char>(packet[2]);
}

bool has_packet_of(std::string_view piece, int pid) {
    const auto layout = packet_layout(piece.substr(0, kTransportHead));
    if (!layout) {
        return false;
    }
    for (std::size_t at = layout->start; at + 3 <= piece.size(); at += layout->size) {
        if (piece[at] == kSync && packet_id(piece.substr(at)) == pid) {
            return true;
        }
    }
    return false;
}

bool looks_like_transport_stream(std::string_view head) {
    return packet_layout(head).has_value();
}

}  // namespace bundle
