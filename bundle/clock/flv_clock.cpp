#include "clock/flv_clock.h"

#include <string>

#include "clock/file_pieces.h"

namespace bundle {

namespace {

constexpr std::int64_t kTagHead = 11;
constexpr std::int64_t kBackPointer = 4;
constexpr std::int64_t kHead = 9;
constexpr std::int64_t kScan = std::int64_t{1} << 20;

enum Kind { kAudio = 8, kVideo = 9, kScript = 18 };

std::uint32_t big(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t byte = at; byte < at + width; ++byte) {
        value = value << 8 | static_cast<unsigned char>(bytes[byte]);
    }
    return value;
}

/// A tag, by its first bytes.
struct Tag {
    int kind = 0;
    std::int64_t content = 0;  ///< its bytes
    std::int64_t time = 0;     ///< milliseconds

    std::int64_t size() const { return kTagHead + content + kBackPointer; }
};

std::optional<Tag> tag_at(std::string_view bytes, std::size_t place) {
    if (bytes.size() < place + kTagHead) {
        return std::nullopt;
    }
    const std::string_view head = bytes.substr(place, kTagHead);
    const Tag tag{head[0], big(head, 1, 3), big(head, 4, 3) | big(head, 7, 1) << 24};
    const bool is_known = tag.kind == kAudio || tag.kind == kVideo || tag.kind == kScript;
    return is_known && big(head, 8, 3) == 0 && tag.content > 0 ? std::optional(tag) : std::nullopt;
}

/// True when the tag's size stands behind it too.
bool is_confirmed(std::string_view bytes, std::size_t place, const Tag& tag) {
    const std::size_t behind = place + static_cast<std::size_t>(kTagHead + tag.content);
    return bytes.size() >= behind + kBackPointer &&
           big(bytes, behind, kBackPointer) == kTagHead + tag.content;
}

/// False for what sets up a decoder, whose time means nothing. `content` is the tag's first two
/// bytes.
bool has_time(int kind, std::string_view content) {
    constexpr unsigned kAvc = 7;
    constexpr unsigned kAac = 10;
    const unsigned first = big(content, 0, 1);
    const unsigned second = big(content, 1, 1);
    if (kind == kVideo && (first & 0x80) != 0) {
        return (first & 0x0F) == 1 || (first & 0x0F) == 3;  // enhanced RTMP
    }
    const bool is_avc = kind == kVideo && (first & 0x0F) == kAvc;
    const bool is_aac = kind == kAudio && first >> 4 == kAac;
    return kind != kScript && (!(is_avc || is_aac) || second == 1);
}

/// Where the next tag or header begins in the bytes; npos when nowhere.
std::size_t next_start(std::string_view bytes) {
    for (std::size_t at = 0; at + kTagHead <= bytes.size(); ++at) {
        const auto tag = tag_at(bytes, at);
        if (bytes.substr(at).starts_with(kFlv) || (tag && is_confirmed(bytes, at, *tag))) {
            return at;
        }
    }
    return bytes.npos;
}

/// Goes through an open file.
class Walk {
  public:
    Walk(int file, EvenClock& clock, const ByteSink& sink)
        : file_(file), clock_(clock), sink_(sink) {}

    void run() {
        const std::int64_t head = header_size(0);
        bool is_going = sink_(read_piece(file_, 0, head));
        for (std::int64_t at = head; is_going && at >= 0;) {
            is_going = step(at);
        }
    }

  private:
    std::int64_t header_size(std::int64_t at) const {
        const std::string head = read_piece(file_, at, kHead);
        return head.size() == kHead ? big(head, 5, 4) + kBackPointer : kHead + kBackPointer;
    }

    /// False at the end.
    bool step(std::int64_t& at) {
        const std::string head = read_piece(file_, at, kTagHead);
        if (head.starts_with(kFlv)) {
            at += header_size(at);
            return true;
        }
        const auto tag = tag_at(head, 0);
        std::string bytes = tag ? read_piece(file_, at, tag->size()) : "";
        if (!tag || !(is_confirmed(bytes, 0, *tag) || ends_well(at + tag->size()))) {
            return look_on(at);
        }
        at += tag->size();
        return hand_on(*tag, bytes);
    }

    /// True when something begins at the place, though the tag before it does not confirm that.
    bool ends_well(std::int64_t at) const {
        const std::string next = read_piece(file_, at, kTagHead);
        return next.starts_with(kFlv) || tag_at(next, 0);
    }

    /// Finds the next tag behind damage.
    bool look_on(std::int64_t& at) const {
        const std::string bytes = read_piece(file_, at + 1, kScan);
        const std::size_t start = next_start(bytes);
        at += 1 + (start == bytes.npos ? kScan / 2 : static_cast<std::int64_t>(start));
        return !bytes.empty();
    }

    bool hand_on(const Tag& tag, std::string& bytes) {
        if (tag.kind == kScript && has_begun_) {
            return true;
        }
        has_begun_ = has_begun_ || tag.kind != kScript;
        if (has_time(tag.kind, std::string_view(bytes).substr(kTagHead, 2))) {
            latest_ = clock_.even(tag.kind, tag.time);
        }
        set_time(bytes, tag.kind == kScript ? tag.time : latest_);
        return sink_(bytes);
    }

    static void set_time(std::string& bytes, std::int64_t time) {
        bytes[4] = static_cast<char>(time >> 16);
        bytes[5] = static_cast<char>(time >> 8);
        bytes[6] = static_cast<char>(time);
        bytes[7] = static_cast<char>(time >> 24);
    }

    int file_;
    EvenClock& clock_;
    const ByteSink& sink_;
    bool has_begun_ = false;
    std::int64_t latest_ = 0;
};

}  // namespace

std::optional<ClockPoint> first_flv_time(std::string_view piece) {
    for (std::size_t at = 0; at + kTagHead <= piece.size(); ++at) {
        const auto tag = piece[at] == kVideo ? tag_at(piece, at) : std::nullopt;
        if (tag && is_confirmed(piece, at, *tag) &&
            has_time(tag->kind, piece.substr(at + kTagHead, 2))) {
            return ClockPoint{static_cast<std::int64_t>(at), static_cast<double>(tag->time) / 1000};
        }
    }
    return std::nullopt;
}

void hand_on_flv(int file, EvenClock& clock, const ByteSink& sink) {
    Walk(file, clock, sink).run();
}

}  // namespace bundle
