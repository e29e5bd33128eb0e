#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// A part of a text or of a file, by its offsets.
struct Range {
    std::size_t start = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - start; }
};

/// The whole number of so many bytes at the place, most significant first, as MP4 files write all
/// numbers. The bytes have to be there.
std::uint64_t number_at(std::string_view bytes, std::size_t at, int width);

/// A box (ISO/IEC 14496-12, 4.2).
struct Box {
    std::string type;  ///< four letters
    Range content;     ///< what is behind its head
};

/// The next box in the part `rest` of the bytes, which then begins behind it. Empty when there is
/// none or when it does not fit.
std::optional<Box> take_box(std::string_view bytes, Range& rest);

/// The content of the first box in the part `range` that `names` lead to, one inside the other.
std::optional<Range> descendant(std::string_view bytes, Range range,
                                std::initializer_list<std::string_view> names);

/// Where the content of the index, the "moov" box, lies in an MP4 file. Empty when there is none
/// and when the file's boxes do not end where the file does: it is truncated then. Also empty for
/// an index of more than 512 MiB, which is none of an MP4 file.
std::optional<Range> find_moov(std::istream& file);

/// The size of a file in bytes, 0 when it can't be told.
std::uint64_t stream_size(std::istream& file);

/// Reads a part that lies in the file; the stream fails when it can't.
std::string read_range(std::istream& file, const Range& range);

}  // namespace bundle
