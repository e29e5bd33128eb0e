#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// A part of a text or a file, from `start` up to but not including `end`.
struct Range {
    std::size_t start = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - start; }
};

/// The big-endian number of `width` bytes at the offset, where the bytes have to exist.
std::uint64_t number_at(std::string_view bytes, std::size_t at, int width);

/// A box (ISO/IEC 14496-12, 4.2).
struct Box {
    std::string type;  ///< four letters
    Range content;     ///< after the head
};

/// Removes the first box from `rest`, a part of the bytes. Empty when there is none or when it does
/// not fit.
std::optional<Box> take_box(std::string_view bytes, Range& rest);

/// The content of the box in the part `range` that `names` lead to, one inside the other.
std::optional<Range> descendant(std::string_view bytes, Range range,
                                std::initializer_list<std::string_view> names);

/// Size of an ordinary box's head.
inline constexpr std::size_t kBoxHead = 8;

/// The place of the index, the content of the "moov" box, in an MP4 file. Empty when there is none,
/// when the file's boxes do not end where the file does (it is truncated) and when the index has
/// more than 512 MiB, which is larger than any movie's.
std::optional<Range> find_moov(std::istream& file);

/// The size of a file in bytes, 0 when it is unknown.
std::uint64_t stream_size(std::istream& file);

/// Reads a part of the file; the stream fails when it can't.
std::string read_range(std::istream& file, const Range& range);

}  // namespace bundle
