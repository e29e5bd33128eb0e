#include "subtitles/track_adding.h"

#include <fstream>
#include <optional>

#include "mp4/box_writing.h"
#include "mp4/boxes.h"

namespace bundle {

namespace {

constexpr std::size_t kMvhdScale = 12;
constexpr std::size_t kMvhdScaleOfVersion1 = 20;
constexpr std::size_t kTkhdSizeFromEnd = 8;

/// What the tracks need to know about an index.
struct Index {
    std::uint32_t scale = 0;
    std::uint32_t next_id = 0;
    std::size_t next_id_at = 0;
    std::size_t tracks_end = 0;
    int width = 0;
    int height = 0;
};

bool is_picture(std::string_view moov, const Range& track) {
    const auto handler = descendant(moov, track, {"mdia", "hdlr"});
    return handler && moov.substr(handler->start, handler->size()).substr(8, 4) == "vide";
}

void take_size(Index& index, std::string_view moov, const Range& track) {
    const auto head = descendant(moov, track, {"tkhd"});
    if (head && head->size() >= kTkhdSizeFromEnd && index.width == 0 && is_picture(moov, track)) {
        const std::size_t at = head->end - kTkhdSizeFromEnd;
        index.width = static_cast<int>(number_at(moov, at, 2));
        index.height = static_cast<int>(number_at(moov, at + 4, 2));
    }
}

void take_clock(Index& index, std::string_view moov, const Range& mvhd) {
    const std::size_t scale_at = moov[mvhd.start] == 1 ? kMvhdScaleOfVersion1 : kMvhdScale;
    if (mvhd.size() >= scale_at + 8) {
        index.scale = static_cast<std::uint32_t>(number_at(moov, mvhd.start + scale_at, 4));
        index.next_id_at = mvhd.end - 4;
        index.next_id = static_cast<std::uint32_t>(number_at(moov, index.next_id_at, 4));
    }
}

std::optional<Index> read_index(std::string_view moov) {
    Index index;
    Range rest{0, moov.size()};
    while (const auto box = take_box(moov, rest)) {
        if (box->type == "mvhd" && box->content.size() > 0) {
            take_clock(index, moov, box->content);
        } else if (box->type == "trak") {
            take_size(index, moov, box->content);
            index.tracks_end = box->content.end;
        }
    }
    const bool is_usable = index.scale > 0 && index.next_id > 0 && index.width > 0;
    return is_usable ? std::optional(index) : std::nullopt;
}

}  // namespace

std::string with_text_tracks(const std::string& moov, const std::vector<TextTrack>& tracks,
                             std::uint64_t samples_at) {
    const auto index = read_index(moov);
    if (!index) {
        return {};
    }
    TrackSetting setting{samples_at, index->next_id, index->scale,
                         subtitle_place(index->width, index->height)};
    std::string more;
    for (const TextTrack& track : tracks) {
        more += text_trak(track, setting);
        setting.samples_at += text_samples(track).size();
        ++setting.id;
    }
    std::string result = moov;
    result.replace(index->next_id_at, 4, number(setting.id, 4));
    return result.insert(index->tracks_end, more);
}

MaybeFailure add_text_tracks(const std::string& path, const std::vector<TextTrack>& tracks) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const auto old = find_moov(file);
    const std::uint64_t size = stream_size(file);
    if (!file || !old || read_range(file, {old->start - 4, old->start}) != "moov") {
        return Failure{"the MP4 file has no index"};
    }
    const std::string moov = read_range(file, *old);
    const std::uint64_t at = old->end == size ? old->start - kBoxHead : size;
    const std::string index = with_text_tracks(moov, tracks, at + kBoxHead);
    if (index.empty()) {
        return Failure{"the index of the MP4 file can't take subtitles"};
    }
    std::string samples;
    for (const TextTrack& track : tracks) {
        samples += text_samples(track);
    }
    if (at == size) {
        file.seekp(static_cast<std::streamoff>(old->start - 4));
        file.write("free", 4);
    }
    file.seekp(static_cast<std::streamoff>(at));
    file << box("mdat", samples) << box("moov", index);
    file.close();
    return file ? MaybeFailure() : Failure{"cannot write the subtitles from inside the movie"};
}

}  // namespace bundle
