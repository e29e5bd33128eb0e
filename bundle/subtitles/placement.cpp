#include "subtitles/placement.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

#include "mp4/box_writing.h"
#include "mp4/boxes.h"

namespace bundle {

namespace {

// Offsets in the contents of boxes of version 0, which ffmpeg writes for up to 2^32 ticks.
constexpr std::size_t kTkhdLayer = 32;
constexpr std::size_t kTkhdLayerOfVersion1 = 44;
constexpr std::size_t kHandlerType = 8;
constexpr std::size_t kHandlerName = 24;
constexpr std::size_t kEntry = 8;                  ///< the first entry of a sample description
constexpr std::size_t kEntryTextBox = 8 + 8 + 10;  ///< in a "tx3g" entry, after its style flags

// Offsets from a track's layer.
constexpr std::size_t kMatrix = 8;
constexpr std::size_t kTop = kMatrix + 7 * 4;  ///< the matrix's vertical offset
constexpr std::size_t kSize = kMatrix + 36;
constexpr std::size_t kMatrixAndSize = 36 + 8;

void put(std::string& bytes, std::size_t at, int width, std::uint64_t value) {
    bytes.replace(at, static_cast<std::size_t>(width), number(value, width));
}

bool is_text(std::string_view bytes, const Range& track) {
    const auto handler = descendant(bytes, track, {"mdia", "hdlr"});
    return handler && handler->size() >= kHandlerName &&
           bytes.substr(handler->start + kHandlerType, 4) == "sbtl";
}

bool is_ours(std::string_view bytes, const Range& track) {
    const auto handler = descendant(bytes, track, {"mdia", "hdlr"});
    return is_text(bytes, track) &&
           bytes.substr(handler->start + kHandlerName, handler->size() - kHandlerName)
               .starts_with(kTrackName);
}

std::vector<Range> other_tracks(std::string_view moov) {
    std::vector<Range> tracks;
    Range rest{0, moov.size()};
    while (const auto box = take_box(moov, rest)) {
        if (box->type == "trak" && is_text(moov, box->content) && !is_ours(moov, box->content)) {
            tracks.push_back(box->content);
        }
    }
    return tracks;
}

/// The offset of a track's layer, which its group and volume, the matrix and the size follow.
std::optional<std::size_t> place_fields(std::string_view bytes, const Range& track) {
    const auto head = descendant(bytes, track, {"tkhd"});
    if (!head || head->size() == 0) {
        return std::nullopt;
    }
    const std::size_t layer =
        head->start + (bytes[head->start] == 1 ? kTkhdLayerOfVersion1 : kTkhdLayer);
    return layer + kSize + 8 <= head->end ? std::optional(layer) : std::nullopt;
}

/// Writes the place into one track; false when the track is not of the expected form.
bool place_in(std::string& bytes, const Range& track, const TextPlace& place) {
    const auto fields = place_fields(bytes, track);
    const auto samples = descendant(bytes, track, {"mdia", "minf", "stbl", "stsd"});
    if (!fields || !samples || samples->size() < kEntry + kEntryTextBox + 8 ||
        bytes.compare(samples->start + kEntry + 4, 4, "tx3g") != 0) {
        return false;
    }
    put(bytes, *fields, 2, 0xFFFF);  // -1, in front of 0
    put(bytes, *fields + kTop, 4, static_cast<std::uint64_t>(place.top) << 16);
    put(bytes, *fields + kSize, 4, static_cast<std::uint64_t>(place.width) << 16);
    put(bytes, *fields + kSize + 4, 4, static_cast<std::uint64_t>(place.height) << 16);
    const std::size_t box = samples->start + kEntry + kEntryTextBox;
    put(bytes, box, 4, 0);  // top and left
    put(bytes, box + 4, 2, static_cast<std::uint64_t>(place.height));
    put(bytes, box + 6, 2, static_cast<std::uint64_t>(place.width));
    return true;
}

}  // namespace

TextPlace subtitle_place(int picture_width, int picture_height) {
    const int height = std::max(picture_height * 15 / 100, 1);
    return {picture_width, height, picture_height - height};
}

bool place_text_track(std::string& moov, const TextPlace& place) {
    Range rest{0, moov.size()};
    while (const auto box = take_box(moov, rest)) {
        if (box->type == "trak" && is_ours(moov, box->content)) {
            return place_in(moov, box->content, place);
        }
    }
    return false;
}

void keep_places(std::string& moov, const std::string& copied_from) {
    const auto copies = other_tracks(moov);
    const auto originals = other_tracks(copied_from);
    if (copies.size() != originals.size()) {
        return;
    }
    for (std::size_t at = 0; at < copies.size(); ++at) {
        const auto to = place_fields(moov, copies[at]);
        const auto from = place_fields(copied_from, originals[at]);
        if (to && from) {
            moov.replace(*to, 2, copied_from, *from, 2);
            moov.replace(*to + kMatrix, kMatrixAndSize, copied_from, *from + kMatrix,
                         kMatrixAndSize);
        }
    }
}

MaybeFailure place_text_track_in(const std::string& path, const TextPlace& place,
                                 const std::string& copied_from) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const auto moov = find_moov(file);
    if (!moov) {
        return Failure{"the MP4 file has no index"};
    }
    std::string bytes = read_range(file, *moov);
    if (!file || !place_text_track(bytes, place)) {
        return Failure{"the MP4 file has no subtitle track"};
    }
    std::ifstream original(copied_from, std::ios::binary);
    if (const auto index = find_moov(original)) {
        keep_places(bytes, read_range(original, *index));
    }
    file.seekp(static_cast<std::streamoff>(moov->start));
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file ? MaybeFailure() : Failure{"cannot write the place of the subtitles"};
}

}  // namespace bundle
