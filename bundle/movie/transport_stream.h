#pragma once

#include <cstddef>
#include <string_view>

namespace bundle {

/// How much of a file's beginning `looks_like_transport_stream` needs, in bytes.
constexpr std::size_t kTransportHead = 4096;

/// True when a file that begins so is an MPEG transport stream: its packets of 188, 192 or 204
/// bytes each have the sync byte 0x47. A recording may begin in the middle of a packet.
bool looks_like_transport_stream(std::string_view head);

}  // namespace bundle
