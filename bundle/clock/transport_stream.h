#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace bundle {

/// How much of a file's beginning `looks_like_transport_stream` needs, in bytes.
constexpr std::size_t kTransportHead = 4096;

/// Where the packets of a transport stream are.
struct PacketLayout {
    std::size_t start = 0;  ///< of the first whole one, by its sync byte
    std::size_t size = 0;   ///< from one sync byte to the next
};

/// The packets of a stream that begins so, or of a piece of one; empty where
/// `looks_like_transport_stream` is false.
std::optional<PacketLayout> packet_layout(std::string_view head);

/// The number of the stream (PID) of a packet (ISO/IEC 13818-1, 2.4.3.2).
int packet_id(std::string_view packet);

/// True for a piece of a transport stream that has packets of the stream `pid`.
bool has_packet_of(std::string_view piece, int pid);

/// True when a file that begins so is an MPEG transport stream: its packets of 188, 192 or 204
/// bytes each have the sync byte 0x47. A recording may begin in the middle of a packet.
bool looks_like_transport_stream(std::string_view head);

}  // namespace bundle
