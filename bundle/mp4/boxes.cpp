#include "mp4/boxes.h"

#include <algorithm>

namespace bundle {

namespace {

constexpr std::size_t kLongHead = 16;
constexpr std::size_t kLargestMoov = std::size_t{512} << 20;

/// The box at the offset `at`, after which `room` bytes are left. `head` is its head, of which 8
/// bytes may be missing.
std::optional<Box> box_from(std::string_view head, std::size_t at, std::size_t room) {
    if (head.size() < kBoxHead) {
        return std::nullopt;
    }
    std::uint64_t size = number_at(head, 0, 4);
    std::size_t content = kBoxHead;
    if (size == 0) {
        size = room;  // the last box, to the end
    } else if (size == 1 && head.size() >= kLongHead) {
        size = number_at(head, kBoxHead, 8);
        content = kLongHead;
    }
    if (size < content || size > room) {
        return std::nullopt;
    }
    return Box{std::string(head.substr(4, 4)), {at + content, at + static_cast<std::size_t>(size)}};
}

}  // namespace

std::uint64_t number_at(std::string_view bytes, std::size_t at, int width) {
    std::uint64_t value = 0;
    for (int byte = 0; byte < width; ++byte) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(byte)]);
    }
    return value;
}

std::optional<Box> take_box(std::string_view bytes, Range& rest) {
    const std::string_view head = bytes.substr(rest.start, std::min(rest.size(), kLongHead));
    auto box = box_from(head, rest.start, rest.size());
    if (box) {
        rest.start = box->content.end;
    }
    return box;
}

std::optional<Range> descendant(std::string_view bytes, Range range,
                                std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        std::optional<Box> box;
        do {
            box = take_box(bytes, range);
        } while (box && box->type != name);
        if (!box) {
            return std::nullopt;
        }
        range = box->content;
    }
    return range;
}

std::optional<Range> find_moov(std::istream& file) {
    const std::size_t size = stream_size(file);
    std::optional<Range> moov;
    for (std::size_t at = 0; at < size;) {
        const std::string head = read_range(file, {at, at + std::min(size - at, kLongHead)});
        const auto box = file ? box_from(head, at, size - at) : std::nullopt;
        if (!box) {
            return std::nullopt;
        }
        if (box->type == "moov" && !moov) {
            moov = box->content;
        }
        at = box->content.end;
    }
    return moov && moov->size() <= kLargestMoov ? moov : std::nullopt;
}

std::uint64_t stream_size(std::istream& file) {
    file.seekg(0, std::ios::end);
    return file ? static_cast<std::uint64_t>(file.tellg()) : 0;
}

std::string read_range(std::istream& file, const Range& range) {
    std::string bytes(range.size(), '\0');
    file.seekg(static_cast<std::streamoff>(range.start));
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

}  // namespace bundle
