#include "clock/ebml.h"

#include <bit>

namespace bundle {

namespace {

constexpr std::size_t kLongestId = 4;

}  // namespace

std::size_t vint_length(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte == 0 ? 0 : static_cast<std::size_t>(std::countl_zero(byte)) + 1;
}

std::uint64_t unsigned_in(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = value << 8 | static_cast<unsigned char>(byte);
    }
    return value;
}

std::optional<Element> element_at(std::string_view bytes, std::size_t place) {
    const std::size_t id = place < bytes.size() ? vint_length(bytes[place]) : 0;
    if (id == 0 || id > kLongestId || bytes.size() <= place + id) {
        return std::nullopt;
    }
    const std::size_t width = vint_length(bytes[place + id]);
    if (width == 0 || bytes.size() < place + id + width) {
        return std::nullopt;
    }
    const std::uint64_t mask = (std::uint64_t{1} << 7 * width) - 1;
    const std::uint64_t size = unsigned_in(bytes.substr(place + id, width)) & mask;
    return Element{static_cast<std::uint32_t>(unsigned_in(bytes.substr(place, id))), id + width, id,
                   static_cast<std::int64_t>(size), size == mask};
}

}  // namespace bundle
