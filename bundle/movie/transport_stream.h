#pragma once

#include <cstddef>
#include <string_view>

namespace bundle {

/// The number of bytes that `looks_like_transport_stream` needs.
constexpr std::size_t kTransportHead = 4096;

/// True when a file with this beginning is an MPEG transport stream: its packets of 188, 192 or 204
/// bytes each have the sync byte 0x47. A recording may begin within a packet.
bool looks_like_transport_stream(std::string_view head);

}  // namespace bundle
