#include "text_track.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <ios>
#include <optional>
#include <string_view>

namespace bundle {

namespace {

constexpr std::uint64_t kHead = 8;
constexpr std::uint64_t kLargestMoov = std::uint64_t{512} << 20;

// Offsets behind the heads of the boxes; all of them in version 0, which ffmpeg writes up to 2^32
// ticks, and for tkhd in version 1.
constexpr std::size_t kTkhdLayer = 32;
constexpr std::size_t kTkhdTop = 40 + 7 * 4;  ///< the matrix's vertical offset
constexpr std::size_t kTkhdSize = 76;
constexpr std::size_t kTkhdLater = 12;  ///< further back in version 1
constexpr std::size_t kHandlerType = 8;
constexpr std::size_t kHandlerName = 24;
constexpr std::size_t kEntry = 8;                  ///< the first entry of a sample description
constexpr std::size_t kEntryTextBox = 8 + 8 + 10;  ///< in a "tx3g" entry, behind its style flags

/// A part of the text with its own offset in it.
struct Range {
    std::size_t start = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - start; }
};

std::uint64_t number_at(std::string_view bytes, std::size_t at, int width) {
    std::uint64_t value = 0;
    for (int byte = 0; byte < width; ++byte) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(byte)]);
    }
    return value;
}

void put(std::string& bytes, std::size_t at, int width, std::uint64_t value) {
    for (int byte = width; byte > 0; --byte, value >>= 8) {
        bytes[at + static_cast<std::size_t>(byte - 1)] = static_cast<char>(value & 0xFF);
    }
}

/// The content of the next box in `rest`, which then begins behind it; the type goes to `type`.
std::optional<Range> take_box(std::string_view bytes, Range& rest, std::string_view& type) {
    if (rest.size() < kHead) {
        return std::nullopt;
    }
    const std::uint64_t size = number_at(bytes, rest.start, 4);
    if (size < kHead || size > rest.size()) {
        return std::nullopt;
    }
    type = bytes.substr(rest.start + 4, 4);
    const Range content{rest.start + kHead, rest.start + size};
    rest.start = content.end;
    return content;
}

std::optional<Range> child(std::string_view bytes, Range rest, std::string_view wanted) {
    std::string_view type;
    while (const auto box = take_box(bytes, rest, type)) {
        if (type == wanted) {
            return box;
        }
    }
    return std::nullopt;
}

std::optional<Range> descendant(std::string_view bytes, Range range,
                                std::initializer_list<std::string_view> names) {
    std::optional<Range> found = range;
    for (const std::string_view name : names) {
        found = found ? child(bytes, *found, name) : std::nullopt;
    }
    return found;
}

bool is_ours(std::string_view bytes, const Range& track) {
    const auto handler = descendant(bytes, track, {"mdia", "hdlr"});
    if (!handler || handler->size() < kHandlerName) {
        return false;
    }
    const std::string_view content = bytes.substr(handler->start, handler->size());
    return content.substr(kHandlerType, 4) == "sbtl" &&
           content.substr(kHandlerName).starts_with(kTrackName);
}

/// Writes the place into one track; false when the track is not of the expected form.
bool place_in(std::string& bytes, const Range& track, const TextPlace& place) {
    const auto head = child(bytes, track, "tkhd");
    const auto samples = descendant(bytes, track, {"mdia", "minf", "stbl", "stsd"});
    if (!head || !samples || samples->size() < kEntry + kEntryTextBox + 8) {
        return false;
    }
    const std::size_t start = head->start + (bytes[head->start] == 1 ? kTkhdLater : 0);
    if (start + kTkhdSize + 8 > head->end ||
        bytes.compare(samples->start + kEntry + 4, 4, "tx3g") != 0) {
        return false;
    }
    put(bytes, start + kTkhdLayer, 2, 0xFFFF);  // -1, in front of 0
    put(bytes, start + kTkhdTop, 4, static_cast<std::uint64_t>(place.top) << 16);
    put(bytes, start + kTkhdSize, 4, static_cast<std::uint64_t>(place.width) << 16);
    put(bytes, start + kTkhdSize + 4, 4, static_cast<std::uint64_t>(place.height) << 16);
    const std::size_t box = samples->start + kEntry + kEntryTextBox;
    put(bytes, box, 4, 0);  // top and left
    put(bytes, box + 4, 2, static_cast<std::uint64_t>(place.height));
    put(bytes, box + 6, 2, static_cast<std::uint64_t>(place.width));
    return true;
}

/// Where the content of the "moov" box lies in the file; empty when there is none.
std::optional<Range> find_moov(std::fstream& file, std::uint64_t size) {
    std::uint64_t at = 0;
    while (at + 2 * kHead <= size) {
        std::string head(2 * kHead, '\0');
        file.seekg(static_cast<std::streamoff>(at));
        if (!file.read(head.data(), static_cast<std::streamsize>(head.size()))) {
            return std::nullopt;
        }
        std::uint64_t length = number_at(head, 0, 4);
        length = length == 1 ? number_at(head, kHead, 8) : length;
        if (length < kHead || length > size - at) {
            return std::nullopt;
        }
        if (head.compare(4, 4, "moov") == 0) {
            return Range{at + kHead, at + length};
        }
        at += length;
    }
    return std::nullopt;
}

}  // namespace

TextPlace subtitle_place(int picture_width, int picture_height) {
    const int height = std::max(picture_height * 15 / 100, 1);
    return {picture_width, height, picture_height - height};
}

bool place_text_track(std::string& moov, const TextPlace& place) {
    Range rest{0, moov.size()};
    std::string_view type;
    while (const auto box = take_box(moov, rest, type)) {
        if (type == "trak" && is_ours(moov, *box)) {
            return place_in(moov, *box, place);
        }
    }
    return false;
}

MaybeFailure place_text_track_in(const std::string& path, const TextPlace& place) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary | std::ios::ate);
    const auto moov = find_moov(file, file ? static_cast<std::uint64_t>(file.tellg()) : 0);
    if (!moov || moov->size() > kLargestMoov) {
        return Failure{"the new film has no index"};
    }
    std::string bytes(moov->size(), '\0');
    file.seekg(static_cast<std::streamoff>(moov->start));
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file || !place_text_track(bytes, place)) {
        return Failure{"the new film has no subtitle track"};
    }
    file.seekp(static_cast<std::streamoff>(moov->start));
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file ? MaybeFailure() : Failure{"cannot write the place of the subtitles"};
}

}  // namespace bundle
