#include "movie/transport_stream.h"

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

bool looks_like_transport_stream(std::string_view head) {
    for (const std::size_t size : kPacketSizes) {
        for (std::size_t start = 0; start < size; ++start) {
            if (is_in_step(head, start, size)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace bundle
