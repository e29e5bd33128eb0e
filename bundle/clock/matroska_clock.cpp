#include "clock/matroska_clock.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "clock/ebml.h"
#include "clock/file_pieces.h"

namespace bundle {

namespace {

using namespace std::string_view_literals;

enum Id : std::uint32_t {
    kHeader = 0x1A45DFA3,
    kSegment = 0x18538067,
    kSeekHead = 0x114D9B74,
    kInfo = 0x1549A966,
    kTracks = 0x1654AE6B,
    kCues = 0x1C53BB6B,
    kAttachments = 0x1941A469,
    kChapters = 0x1043A770,
    kTags = 0x1254C367,
    kClusterId = 0x1F43B675,
    kTimestamp = 0xE7,
    kPosition = 0xA7,
    kPreviousSize = 0xAB,
    kSimpleBlock = 0xA3,
    kBlockGroup = 0xA0,
    kBlock = 0xA1,
    kVoid = 0xEC,
    kChecksum = 0xBF,
};

constexpr std::int64_t kLargestElement = std::int64_t{64} << 20;
constexpr std::size_t kHead = std::size_t{64} << 10;

bool is_known(const Element& element) {
    constexpr std::uint32_t kKnown[] = {
        kHeader,       kSegment,     kSeekHead,   kInfo,      kTracks,    kCues,
        kAttachments,  kChapters,    kTags,       kClusterId, kTimestamp, kPosition,
        kPreviousSize, kSimpleBlock, kBlockGroup, kVoid,      kChecksum};
    return std::find(std::begin(kKnown), std::end(kKnown), element.id) != std::end(kKnown);
}

/// Elements whose content is gone through.
bool is_opened(const Element& element) {
    return element.id == kSegment || element.id == kClusterId;
}

/// Where a block begins in a SimpleBlock or BlockGroup.
std::optional<std::size_t> block_in(std::string_view bytes, const Element& element) {
    if (element.id == kSimpleBlock) {
        return element.head;
    }
    for (std::size_t at = element.head; at < bytes.size();) {
        const auto child = element_at(bytes, at);
        if (!child || child->has_unknown_size) {
            return std::nullopt;
        }
        if (child->id == kBlock) {
            return at + child->head;
        }
        at += child->head + static_cast<std::size_t>(child->size);
    }
    return std::nullopt;
}

/// Goes through an open file.
class Walk {
  public:
    Walk(int file, std::int64_t size, EvenClock& clock, const ByteSink& sink)
        : file_(file),
          size_(size),
          tick_(matroska_tick(read_piece(file, 0, kHead))),
          clock_(clock),
          sink_(sink) {}

    void run() {
        for (std::int64_t at = 0; at < size_ && is_going_;) {
            const auto element = element_at(read_piece(file_, at, kElementHead), 0);
            at = element && is_plausible(*element, at) ? step(*element, at)
                                                       : cluster_behind(file_, at + 1, size_);
        }
    }

  private:
    bool is_plausible(const Element& element, std::int64_t at) const {
        return is_known(element) && (is_opened(element) || (!element.has_unknown_size &&
                                                            element.size <= kLargestElement &&
                                                            at + element.size <= size_));
    }

    /// What comes next.
    std::int64_t step(const Element& element, std::int64_t at) {
        const auto head = static_cast<std::int64_t>(element.head);
        const std::int64_t behind = at + head + (is_opened(element) ? 0 : element.size);
        const bool is_block = element.id == kSimpleBlock || element.id == kBlockGroup;
        if (element.id == kClusterId) {
            has_begun_ = true;
            base_.reset();
        } else if (element.id == kTimestamp) {
            const std::string bytes = read_piece(file_, at, behind - at);
            cluster_ticks_ = static_cast<std::int64_t>(
                unsigned_in(std::string_view(bytes).substr(element.head)));
        } else if (is_block && has_begun_) {
            hand_on_block(element, read_piece(file_, at, behind - at));
        } else if (!has_begun_ && element.id != kSeekHead && element.id != kCues) {
            hand_on_head(element, read_piece(file_, at, behind - at));
        }
        return behind;
    }

    void hand_on_head(const Element& element, std::string bytes) {
        if (element.id == kSegment) {
            const std::size_t width = element.head - element.id_length;
            bytes[element.id_length] = static_cast<char>((1 << (9 - width)) - 1);
            std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(element.id_length) + 1,
                      bytes.end(), '\xFF');
        }
        is_going_ = sink_(bytes);
    }

    void hand_on_block(const Element& element, std::string bytes) {
        const auto block = block_in(bytes, element);
        const std::size_t width = block && *block < bytes.size() ? vint_length(bytes[*block]) : 0;
        if (width == 0 || *block + width + 2 > bytes.size()) {
            return;
        }
        const std::string_view whole = bytes;
        const auto track = static_cast<int>(unsigned_in(whole.substr(*block, width)));
        const auto relative =
            static_cast<std::int16_t>(unsigned_in(whole.substr(*block + width, 2)));
        const std::int64_t ticks = even(track, cluster_ticks_ + relative);
        open_cluster(ticks);
        bytes[*block + width] = static_cast<char>((ticks - *base_) >> 8);
        bytes[*block + width + 1] = static_cast<char>(ticks - *base_);
        is_going_ = is_going_ && sink_(bytes);
    }

    std::int64_t even(int track, std::int64_t ticks) {
        const std::int64_t time = std::llround(static_cast<double>(ticks) * tick_);
        const std::int64_t moved = clock_.even(track, time) - time;
        return std::max<std::int64_t>(ticks + std::llround(static_cast<double>(moved) / tick_), 0);
    }

    /// Begins a cluster where none is open in which a block can have this time.
    void open_cluster(std::int64_t ticks) {
        using Range = std::numeric_limits<std::int16_t>;
        if (base_ && ticks - *base_ <= Range::max() && ticks - *base_ >= Range::min()) {
            return;
        }
        base_ = ticks;
        std::string head(kCluster);
        head += "\x01\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xE7\x88"sv;
        for (int shift = 56; shift >= 0; shift -= 8) {
            head += static_cast<char>(ticks >> shift);
        }
        is_going_ = sink_(head);
    }

    int file_;
    std::int64_t size_;
    double tick_;
    EvenClock& clock_;
    const ByteSink& sink_;
    bool is_going_ = true;
    bool has_begun_ = false;
    std::int64_t cluster_ticks_ = 0;
    std::optional<std::int64_t> base_;  ///< the ticks of the cluster that is open
};

/// The ticks of the cluster that begins at a place.
std::optional<std::uint64_t> cluster_ticks(std::string_view piece, std::size_t place) {
    const auto cluster = element_at(piece, place);
    std::size_t at = place + (cluster ? cluster->head : 0);
    auto child = cluster ? element_at(piece, at) : std::nullopt;
    if (child && child->id == kChecksum) {
        at += child->head + static_cast<std::size_t>(child->size);
        child = element_at(piece, at);
    }
    if (!child || child->id != kTimestamp || child->size < 1 || child->size > 8 ||
        piece.size() < at + child->head + static_cast<std::size_t>(child->size)) {
        return std::nullopt;
    }
    return unsigned_in(piece.substr(at + child->head, static_cast<std::size_t>(child->size)));
}

}  // namespace

double matroska_tick(std::string_view head) {
    constexpr std::string_view kScale = "\x2A\xD7\xB1";
    const std::size_t place = head.find(kScale);
    const auto element = place == head.npos ? std::nullopt : element_at(head, place);
    if (!element || element->size < 1 || element->size > 8) {
        return 1;
    }
    const auto size = static_cast<std::size_t>(element->size);
    const auto value = unsigned_in(head.substr(place + element->head, size));
    return value > 0 ? static_cast<double>(value) / 1e6 : 1;
}

std::optional<ClockPoint> first_matroska_time(std::string_view piece, double tick) {
    for (std::size_t at = piece.find(kCluster); at != piece.npos;
         at = piece.find(kCluster, at + 1)) {
        if (const auto ticks = cluster_ticks(piece, at)) {
            return ClockPoint{static_cast<std::int64_t>(at),
                              static_cast<double>(*ticks) * tick / 1000};
        }
    }
    return std::nullopt;
}

void hand_on_matroska(int file, std::int64_t size, EvenClock& clock, const ByteSink& sink) {
    Walk(file, size, clock, sink).run();
}

}  // namespace bundle
