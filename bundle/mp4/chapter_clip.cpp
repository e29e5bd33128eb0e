#include "mp4/chapter_clip.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "mp4/box_writing.h"
#include "mp4/boxes.h"

namespace bundle {

namespace {

using Contents = std::map<std::string, std::string>;  ///< of boxes, by their types

// Offsets in boxes of version 0 (ISO/IEC 14496-12).
constexpr std::size_t kScale = 12;  ///< ticks per second, in mvhd and mdhd
constexpr std::size_t kDuration = 16;
constexpr std::size_t kTrackDuration = 20;
constexpr std::size_t kEditDuration = 8;
constexpr std::size_t kHandler = 8;
constexpr std::size_t kCount = 4;    ///< of a table's entries
constexpr std::size_t kEntries = 8;  ///< of a table
constexpr std::size_t kSize = 4;
constexpr std::size_t kSizesCount = 8;
constexpr std::size_t kSizes = 12;

/// The content of the box that `names` lead to; empty unless it has version 0 and `least` bytes.
std::string content(const std::string& bytes, const Range& parent,
                    std::initializer_list<std::string_view> names, std::size_t least) {
    const auto box = descendant(bytes, parent, names);
    return box && box->size() >= least && bytes[box->start] == 0
               ? bytes.substr(box->start, box->size())
               : "";
}

std::string with_word(std::string box, std::size_t at, std::uint64_t value) {
    return box.replace(at, 4, number(value, 4));
}

bool is_container(const std::string& type) {
    static const std::vector<std::string> kContainers{"mdia", "minf", "stbl", "edts"};
    return std::find(kContainers.begin(), kContainers.end(), type) != kContainers.end();
}

/// The boxes in the range, with the contents of some replaced.
std::string edited(const std::string& bytes, Range range, const Contents& contents) {
    std::string result;
    while (const auto part = take_box(bytes, range)) {
        const auto other = contents.find(part->type);
        if (other != contents.end()) {
            result += box(part->type, other->second);
        } else if (is_container(part->type)) {
            result += box(part->type, edited(bytes, part->content, contents));
        } else {
            result += box(part->type, bytes.substr(part->content.start, part->content.size()));
        }
    }
    return result;
}

/// The lengths of the samples up to `end`, where the last one ends.
std::vector<std::uint64_t> lengths_until(const std::string& stts, std::uint64_t end) {
    std::vector<std::uint64_t> lengths;
    for (std::size_t at = kEntries; at + 8 <= stts.size(); at += 8) {
        const std::uint64_t length = number_at(stts, at + 4, 4);
        for (auto count = number_at(stts, at, 4); count > 0 && end > 0 && length > 0; --count) {
            lengths.push_back(std::min(length, end));
            end -= lengths.back();
        }
    }
    return lengths;
}

std::string times_table(const std::vector<std::uint64_t>& lengths) {
    std::string table = number(0, 4) + number(lengths.size(), 4);
    for (const std::uint64_t length : lengths) {
        table += number(1, 4) + number(length, 4);
    }
    return table;
}

/// The sizes of the first samples. When all have one size, there is no list.
std::string first_sizes(const std::string& stsz, std::size_t samples) {
    const bool is_one_size = number_at(stsz, kSize, 4) != 0;
    const std::size_t end = is_one_size ? kSizes : kSizes + 4 * samples;
    return stsz.size() < end ? "" : with_word(stsz.substr(0, end), kSizesCount, samples);
}

/// The changed boxes of a track that has to end at `end`, in ticks of the file; empty unless all of
/// it is in one chunk, as ffmpeg writes chapters.
Contents changes_in(const std::string& moov, const Range& trak, std::uint64_t end,
                    std::uint64_t scale) {
    const std::string tkhd = content(moov, trak, {"tkhd"}, kTrackDuration + 4);
    const std::string elst = content(moov, trak, {"edts", "elst"}, kEditDuration + 4);
    const std::string mdhd = content(moov, trak, {"mdia", "mdhd"}, kDuration + 4);
    const auto table = [&](const char* name, std::size_t least) {
        return content(moov, trak, {"mdia", "minf", "stbl", name}, least);
    };
    const std::string stts = table("stts", kEntries + 8);
    const std::string stsz = table("stsz", kSizes);
    const std::string stsc = table("stsc", kEntries + 12);
    const std::string stco = table("stco", kEntries + 4);
    if (tkhd.empty() || elst.empty() || mdhd.empty() || stts.empty() || stsz.empty() ||
        stsc.empty() || stco.empty() || number_at(stco, kCount, 4) != 1) {
        return {};
    }
    const std::uint64_t media_end = end * number_at(mdhd, kScale, 4) / scale;
    const auto lengths = lengths_until(stts, media_end);
    const std::string sizes = first_sizes(stsz, lengths.size());
    if (lengths.empty() || sizes.empty()) {
        return {};
    }
    return {{"tkhd", with_word(tkhd, kTrackDuration, end)},
            {"elst", with_word(elst, kEditDuration, end)},
            {"mdhd", with_word(mdhd, kDuration, media_end)},
            {"stts", times_table(lengths)},
            {"stsz", sizes},
            {"stsc", with_word(stsc, kEntries + 4, lengths.size())}};
}

/// The user data without its list of chapters ("chpl"); players use the track.
std::string without_list(const std::string& moov, Range range) {
    std::string result;
    while (const auto part = take_box(moov, range)) {
        if (part->type != "chpl") {
            result += box(part->type, moov.substr(part->content.start, part->content.size()));
        }
    }
    return result;
}

struct Track {
    Range trak;
    std::string kind;
    std::uint64_t duration = 0;
};

std::vector<Track> tracks_in(const std::string& moov) {
    std::vector<Track> tracks;
    Range rest{0, moov.size()};
    while (const auto part = take_box(moov, rest)) {
        const std::string tkhd = content(moov, part->content, {"tkhd"}, kTrackDuration + 4);
        const std::string hdlr = content(moov, part->content, {"mdia", "hdlr"}, kHandler + 4);
        if (part->type == "trak" && !tkhd.empty() && !hdlr.empty()) {
            tracks.push_back(
                {part->content, hdlr.substr(kHandler, 4), number_at(tkhd, kTrackDuration, 4)});
        }
    }
    return tracks;
}

std::string rebuilt(const std::string& moov, const Track& chapters, const Contents& changes,
                    const std::string& mvhd) {
    std::string result;
    Range rest{0, moov.size()};
    while (const auto part = take_box(moov, rest)) {
        std::string inside = moov.substr(part->content.start, part->content.size());
        if (part->content.start == chapters.trak.start) {
            inside = edited(moov, part->content, changes);
        } else if (part->type == "mvhd") {
            inside = mvhd;
        } else if (part->type == "udta") {
            inside = without_list(moov, part->content);
        }
        result += box(part->type, inside);
    }
    return result;
}

}  // namespace

std::optional<std::string> clipped_chapters(const std::string& moov) {
    const std::string mvhd = content(moov, {0, moov.size()}, {"mvhd"}, kDuration + 4);
    const std::uint64_t scale = mvhd.empty() ? 0 : number_at(mvhd, kScale, 4);
    std::uint64_t end = 0;
    const Track* chapters = nullptr;
    const auto tracks = tracks_in(moov);
    for (const Track& track : tracks) {
        if (track.kind == "vide" || track.kind == "soun") {
            end = std::max(end, track.duration);
        } else if (track.kind == "text") {
            chapters = &track;
        }
    }
    if (scale == 0 || end == 0 || !chapters || chapters->duration <= end) {
        return std::nullopt;
    }
    const Contents changes = changes_in(moov, chapters->trak, end, scale);
    if (changes.empty()) {
        return std::nullopt;
    }
    return rebuilt(moov, *chapters, changes, with_word(mvhd, kDuration, end));
}

void clip_chapters(const std::string& path) {
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    const auto moov = find_moov(file);
    if (!moov || moov->end != stream_size(file)) {
        return;
    }
    const auto clipped = clipped_chapters(read_range(file, *moov));
    if (!clipped) {
        return;
    }
    const std::string index = box("moov", *clipped);
    file.seekp(static_cast<std::streamoff>(moov->start - kBoxHead));
    file.write(index.data(), static_cast<std::streamsize>(index.size()));
    file.close();
    std::error_code ignored;
    std::filesystem::resize_file(path, moov->start - kBoxHead + index.size(), ignored);
}

}  // namespace bundle
