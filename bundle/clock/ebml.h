#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace bundle {

/// The head of an element of a Matroska file (RFC 8794).
struct Element {
    std::uint32_t id = 0;
    std::size_t head = 0;           ///< bytes before the content
    std::size_t id_length = 0;      ///< of them for the id; the rest is for the size
    std::int64_t size = 0;          ///< of the content
    bool has_unknown_size = false;  ///< it ends where something begins that can't be in it
};

/// The longest head.
inline constexpr std::size_t kElementHead = 12;

/// The element that begins at a place; empty when there is none or its head is not all there.
std::optional<Element> element_at(std::string_view bytes, std::size_t place);

/// How many bytes a number of variable length has that begins with `first`; 0: it is none.
std::size_t vint_length(char first);

/// An unsigned number, most significant byte first.
std::uint64_t unsigned_in(std::string_view bytes);

}  // namespace bundle
