#include "mp4/index.h"

#include <limits>

#include "mp4/boxes.h"

namespace bundle {

namespace {

// Offsets in the contents of the boxes, which begin with a version and flags.
constexpr std::size_t kMvhdScale = 12;
constexpr std::size_t kMvhdScaleOfVersion1 = 20;
constexpr std::size_t kTkhdDuration = 20;
constexpr std::size_t kTkhdDurationOfVersion1 = 28;
constexpr std::size_t kHandler = 8;
constexpr std::size_t kSampleSize = 4;  ///< in stsz: of all samples, or 0
constexpr std::size_t kCountOfSizes = 8;
constexpr std::size_t kCount = 4;  ///< in the other tables

/// A box's table: the number of its entries at the offset `count_at`, then the entries.
class Table {
  public:
    static std::optional<Table> in(std::string_view box, std::size_t count_at,
                                   std::size_t entry_size) {
        const std::size_t head = count_at + 4;
        if (box.size() < head) {
            return std::nullopt;
        }
        const std::uint64_t count = number_at(box, count_at, 4);
        return count * entry_size <= box.size() - head
                   ? std::optional(Table(box.substr(head), count, entry_size))
                   : std::nullopt;
    }

    std::uint64_t count() const { return count_; }

    /// The number of `width` bytes at the offset in an entry, which has to exist.
    std::uint64_t at(std::uint64_t entry, std::size_t offset, int width) const {
        return number_at(bytes_, static_cast<std::size_t>(entry) * entry_size_ + offset, width);
    }

  private:
    Table(std::string_view bytes, std::uint64_t count, std::size_t entry_size)
        : bytes_(bytes), count_(count), entry_size_(entry_size) {}

    std::string_view bytes_;
    std::uint64_t count_;
    std::size_t entry_size_;
};

/// The content of the box that `names` lead to.
std::optional<std::string_view> content(std::string_view bytes, const Range& parent,
                                        std::initializer_list<std::string_view> names) {
    const auto box = descendant(bytes, parent, names);
    return box ? std::optional(bytes.substr(box->start, box->size())) : std::nullopt;
}

/// The sizes of a track's samples: one for all, or one for each (8.7.3).
class SampleSizes {
  public:
    static std::optional<SampleSizes> in(std::string_view bytes, const Range& samples) {
        const auto box = content(bytes, samples, {"stsz"});
        if (!box || box->size() <= kCountOfSizes) {
            return std::nullopt;
        }
        const std::uint64_t size = number_at(*box, kSampleSize, 4);
        const auto table = Table::in(*box, kCountOfSizes, size == 0 ? 4 : 0);
        return table ? std::optional(SampleSizes(*table, size)) : std::nullopt;
    }

    std::uint64_t count() const { return table_.count(); }

    /// The bytes of `count` samples from `first` on, all of which have to exist.
    std::uint64_t bytes_of(std::uint64_t first, std::uint64_t count) const {
        if (size_ != 0) {
            return size_ * count;
        }
        std::uint64_t sum = 0;
        for (std::uint64_t at = first; at < first + count; ++at) {
            sum += table_.at(at, 0, 4);
        }
        return sum;
    }

  private:
    SampleSizes(const Table& table, std::uint64_t size) : table_(table), size_(size) {}

    Table table_;
    std::uint64_t size_;  ///< of all samples; 0: see the table
};

/// Where a track's chunks begin (8.7.5), and how many samples each contains (8.7.4).
class Chunks {
  public:
    static std::optional<Chunks> in(std::string_view bytes, const Range& samples) {
        const auto narrow = content(bytes, samples, {"stco"});
        const auto wide = content(bytes, samples, {"co64"});
        const auto runs = content(bytes, samples, {"stsc"});
        if (!runs || (!narrow && !wide)) {
            return std::nullopt;
        }
        const int width = narrow ? 4 : 8;
        const auto offsets = Table::in(narrow ? *narrow : *wide, kCount, narrow ? 4 : 8);
        const auto table = Table::in(*runs, kCount, 12);
        return offsets && table ? std::optional(Chunks(*offsets, *table, width)) : std::nullopt;
    }

    /// True when the chunks contain exactly these samples and lie within the file.
    bool lie_within(std::uint64_t file_size, const SampleSizes& sizes) const {
        std::uint64_t sample = 0;
        std::uint64_t run = 0;
        for (std::uint64_t chunk = 0; chunk < offsets_.count(); ++chunk) {
            run += begins_at(run + 1, chunk) ? 1 : 0;
            const std::uint64_t count = run < runs_.count() ? runs_.at(run, 4, 4) : 0;
            if (!begins_at(0, 0) || count > sizes.count() - sample) {
                return false;
            }
            const std::uint64_t length = sizes.bytes_of(sample, count);
            const std::uint64_t start = offsets_.at(chunk, 0, width_);
            if (start > file_size || length > file_size - start) {
                return false;
            }
            sample += count;
        }
        return sample == sizes.count();
    }

  private:
    Chunks(const Table& offsets, const Table& runs, int width)
        : offsets_(offsets), runs_(runs), width_(width) {}

    /// Runs count chunks from 1.
    bool begins_at(std::uint64_t run, std::uint64_t chunk) const {
        return run < runs_.count() && runs_.at(run, 0, 4) == chunk + 1;
    }

    Table offsets_;
    Table runs_;
    int width_;
};

/// A box whose times take 8 bytes each instead of 4.
bool is_wide(std::string_view box) {
    return !box.empty() && box.front() == 1;
}

/// A box's duration in ticks, 0 when it is unknown; the offset depends on the box's version.
std::optional<double> ticks_in(std::string_view box, std::size_t narrow_at, std::size_t wide_at) {
    const std::size_t at = is_wide(box) ? wide_at : narrow_at;
    const int width = is_wide(box) ? 8 : 4;
    if (box.size() < at + static_cast<std::size_t>(width)) {
        return std::nullopt;
    }
    const std::uint64_t ticks = number_at(box, at, width);
    const std::uint64_t unknown = is_wide(box) ? std::numeric_limits<std::uint64_t>::max()
                                               : std::numeric_limits<std::uint32_t>::max();
    return ticks == unknown ? 0 : static_cast<double>(ticks);
}

/// The MP4 file's time scale and duration (8.2.2); none for a scale of 0.
struct Clock {
    double ticks_per_second = 1;
    double ticks = 0;
};

std::optional<Clock> clock_in(std::string_view moov) {
    const std::string_view mvhd = content(moov, {0, moov.size()}, {"mvhd"}).value_or("");
    const auto ticks = ticks_in(mvhd, kMvhdScale + 4, kMvhdScaleOfVersion1 + 4);
    const double scale = ticks ? static_cast<double>(number_at(
                                     mvhd, is_wide(mvhd) ? kMvhdScaleOfVersion1 : kMvhdScale, 4))
                               : 0;
    return scale > 0 ? std::optional(Clock{scale, *ticks}) : std::nullopt;
}

/// A track's duration in ticks (8.3.2).
double ticks_of_track(std::string_view bytes, const Range& trak) {
    const std::string_view tkhd = content(bytes, trak, {"tkhd"}).value_or("");
    return ticks_in(tkhd, kTkhdDuration, kTkhdDurationOfVersion1).value_or(0);
}

/// The track, if all of its samples lie within the file.
std::optional<Mp4Track> track_in(std::string_view bytes, const Range& trak, std::uint64_t file_size,
                                 const Clock& clock) {
    const auto handler = content(bytes, trak, {"mdia", "hdlr"});
    const auto samples = descendant(bytes, trak, {"mdia", "minf", "stbl"});
    const auto sizes = samples ? SampleSizes::in(bytes, *samples) : std::nullopt;
    const auto chunks = samples ? Chunks::in(bytes, *samples) : std::nullopt;
    if (!handler || handler->size() < kHandler + 4 || !sizes || !chunks ||
        !chunks->lie_within(file_size, *sizes)) {
        return std::nullopt;
    }
    return Mp4Track{std::string(handler->substr(kHandler, 4)), sizes->count(),
                    ticks_of_track(bytes, trak) / clock.ticks_per_second};
}

}  // namespace

std::optional<Mp4Index> read_mp4_index(std::istream& file) {
    const auto moov = find_moov(file);
    const std::string bytes = moov ? read_range(file, *moov) : "";
    const auto clock = clock_in(bytes);
    if (!file || !clock) {
        return std::nullopt;
    }
    Mp4Index index{clock->ticks / clock->ticks_per_second, {}};
    const std::uint64_t size = stream_size(file);
    Range rest{0, bytes.size()};
    while (const auto box = take_box(bytes, rest)) {
        if (box->type == "trak") {
            const auto track = track_in(bytes, box->content, size, *clock);
            if (!track) {
                return std::nullopt;
            }
            index.tracks.push_back(*track);
        }
    }
    return rest.size() == 0 ? std::optional(index) : std::nullopt;
}

}  // namespace bundle
