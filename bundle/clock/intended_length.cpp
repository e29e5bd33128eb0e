#include "clock/intended_length.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "clock/asf_parts.h"
#include "clock/file_pieces.h"
#include "core/files.h"

namespace bundle {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t kHead = std::int64_t{64} << 10;
constexpr std::int64_t kBlock = std::int64_t{16} << 10;

// Offsets in a RIFF file and in the content of "strh".
constexpr std::size_t kRiffSize = 4;
constexpr std::size_t kChunkHead = 8;
constexpr std::size_t kScale = 20;
constexpr std::size_t kRate = 24;
constexpr std::size_t kLength = 32;

/// What an MXF file begins with.
constexpr std::string_view kMxf = "\x06\x0E\x2B\x34"sv;

/// True for the type of a box that an MP4 or QuickTime file may begin with.
bool is_first_box(std::string_view type) {
    constexpr std::array<std::string_view, 8> kFirst{"ftyp", "moov", "mdat", "free",
                                                     "skip", "wide", "pnot", "styp"};
    return std::find(kFirst.begin(), kFirst.end(), type) != kFirst.end();
}

/// A Duration element of 4 or 8 bytes (RFC 9559, 5.1.2.10). A recording that was only streamed has
/// none.
bool has_matroska_duration(std::string_view head) {
    return head.find("\x44\x89\x84") != head.npos || head.find("\x44\x89\x88") != head.npos;
}

bool exceeds(std::uint64_t intended, std::int64_t size) {
    return intended > static_cast<std::uint64_t>(std::max<std::int64_t>(size, 0));
}

std::optional<double> length_in_avi(std::string_view head, std::int64_t size) {
    const std::size_t stream = head.find("vids");
    if (!exceeds(little(head, kRiffSize, 4) + kChunkHead, size) || stream == head.npos) {
        return std::nullopt;
    }
    const std::string_view header = head.substr(stream);
    const auto rate = static_cast<double>(little(header, kRate, 4));
    const auto ticks = static_cast<double>(little(header, kScale, 4) * little(header, kLength, 4));
    return rate > 0 && ticks > 0 ? std::optional(ticks / rate) : std::nullopt;
}

/// Only where the file is not one whole movie.
std::optional<double> length_in_asf(const std::vector<AsfPart>& parts) {
    const bool is_whole = parts.size() < 2 && (parts.empty() || !parts.front().is_truncated);
    return is_whole ? std::nullopt : length_of(parts);
}

bool is_blank(std::istream& file, std::int64_t at) {
    return read_piece(file, at, kBlock).find_first_not_of('\0') == std::string::npos;
}

}  // namespace

std::optional<double> length_in_header(std::int64_t size, const ReadBytes& read) {
    const std::string head = read(0, kHead);
    return head.starts_with("RIFF") && head.find("AVI ") == kChunkHead
               ? length_in_avi(head, size)
               : length_in_asf(asf_parts(size, read));
}

bool has_own_length(std::string_view head) {
    constexpr std::size_t kBoxType = 4;
    if (head.starts_with(kMatroska)) {
        return has_matroska_duration(head);
    }
    return head.starts_with("RIFF") || head.starts_with(kAsf) || head.starts_with(kMxf) ||
           (head.size() >= 2 * kBoxType && is_first_box(head.substr(kBoxType, kBoxType)));
}

std::int64_t content_end(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::int64_t size = file_size(path);
    std::int64_t content = 0;
    std::int64_t zeros = size / kBlock;  // the last, incomplete block counts as one of them
    if (size <= kBlock || !is_blank(file, size - kBlock)) {
        return size;
    }
    while (content < zeros) {
        const std::int64_t middle = (content + zeros) / 2;
        if (is_blank(file, middle * kBlock)) {
            zeros = middle;
        } else {
            content = middle + 1;
        }
    }
    return std::min(content * kBlock, size);
}

double intended_length(const std::string& path, double readable) {
    std::ifstream file(path, std::ios::binary);
    const std::int64_t size = file_size(path);
    const ReadBytes read = [&file](std::int64_t from, std::int64_t count) {
        return read_piece(file, from, static_cast<std::size_t>(count));
    };
    if (const auto stated = length_in_header(size, read)) {
        return *stated;
    }
    if (has_own_length(read(0, kHead))) {
        return 0;
    }
    const std::int64_t content = content_end(path);
    return content > 0 && content < size
               ? readable * static_cast<double>(size) / static_cast<double>(content)
               : 0;
}

}  // namespace bundle
