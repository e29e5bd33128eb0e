#include "clock/asf_parts.h"

#include <algorithm>
#include <cmath>

namespace bundle {

namespace {

constexpr std::string_view kProperties{
    "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65", 16};
constexpr std::string_view kStream{
    "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65", 16};

constexpr std::size_t kMostParts = 100;
constexpr std::int64_t kMostOfHeader = std::int64_t{64} << 10;
constexpr std::size_t kObjectSize = 16;   ///< where an object's size is
constexpr std::size_t kObjectHead = 24;   ///< its GUID and size
constexpr std::size_t kHeaderHead = 30;   ///< what comes before the objects in the header
constexpr std::int64_t kDataHead = 50;    ///< what comes before the packets
constexpr std::int64_t kPacketHead = 64;  ///< more than what comes before a packet's content
constexpr std::int64_t kMostPackets = std::int64_t{1} << 26;
constexpr double kLateStart = 2;  ///< seconds; headers are not exact

// Offsets in the File Properties Object.
constexpr std::size_t kFileSize = 40;
constexpr std::size_t kPacketCount = 56;
constexpr std::size_t kPlayDuration = 64;  ///< in units of 100 ns
constexpr std::size_t kPreroll = 80;       ///< in milliseconds, part of the play duration
constexpr std::size_t kFlags = 88;
constexpr std::size_t kPacketSize = 92;
constexpr std::uint64_t kBroadcast = 1;  ///< the sizes and durations mean nothing

/// A size or a count, as far as a file can have it.
std::int64_t size_in(std::string_view bytes, std::size_t at) {
    constexpr std::uint64_t kMost = std::uint64_t{1} << 60;
    return static_cast<std::int64_t>(std::min(little(bytes, at, 8), kMost));
}

/// The objects of a kind in a header, one after the other.
std::string objects(std::string_view header, std::string_view kind) {
    std::string found;
    for (std::size_t at = kHeaderHead; at + kObjectHead <= header.size();) {
        const std::uint64_t size = little(header, at + kObjectSize, 8);
        if (size < kObjectHead || size > header.size() - at) {
            break;
        }
        if (header.substr(at).starts_with(kind)) {
            found += header.substr(at, size);
        }
        at += size;
    }
    return found;
}

/// When a packet is sent, in seconds, by its beginning (5.2.1 and 5.2.2).
std::optional<double> send_time(std::string_view packet) {
    constexpr unsigned kHasCorrection = 0x80;
    constexpr std::size_t kWidths[] = {0, 1, 2, 4};
    const std::uint64_t first = little(packet, 0, 1);
    const std::size_t head = (first & kHasCorrection) != 0 ? 1 + (first & 0x0F) : 0;
    const std::uint64_t types = little(packet, head, 1);
    const std::size_t time =
        head + 2 + kWidths[types >> 5 & 3] + kWidths[types >> 1 & 3] + kWidths[types >> 3 & 3];
    return packet.size() >= time + 4
               ? std::optional(static_cast<double>(little(packet, time, 4)) / 1e3)
               : std::nullopt;
}

/// Reads one part.
class PartReader {
  public:
    PartReader(std::int64_t from, const ReadBytes& read)
        : from_(from), read_(read), header_(read(from, kMostOfHeader)) {
        const std::size_t at = header_.find(kProperties);
        properties_ = at == header_.npos ? "" : std::string_view(header_).substr(at);
    }

    bool is_part() const { return header_.starts_with(kAsf); }

    /// What the header gives; empty where it gives none.
    std::optional<std::int64_t> size() const {
        const std::int64_t size = size_in(properties_, kFileSize);
        return is_broadcast() || size <= static_cast<std::int64_t>(kHeaderHead)
                   ? std::nullopt
                   : std::optional(size);
    }

    std::optional<double> seconds() const {
        const double stated = static_cast<double>(little(properties_, kPlayDuration, 8)) / 1e7 -
                              static_cast<double>(little(properties_, kPreroll, 8)) / 1e3;
        const double start = packet_time(0).value_or(0);
        const bool is_end = start > kLateStart && stated > start &&
                            packet_time(last_packet()).value_or(0) <= stated + kLateStart;
        const double seconds = is_end ? stated - start : stated;
        return is_broadcast() || seconds <= 0 ? std::nullopt : std::optional(seconds);
    }

    std::string streams() const { return objects(header_, kStream); }

  private:
    bool is_broadcast() const { return (little(properties_, kFlags, 4) & kBroadcast) != 0; }

    std::int64_t last_packet() const {
        const std::int64_t count = size_in(properties_, kPacketCount);
        return std::clamp<std::int64_t>(count - 1, 0, kMostPackets);
    }

    std::optional<double> packet_time(std::int64_t number) const {
        const auto size = static_cast<std::int64_t>(little(properties_, kPacketSize, 4));
        const std::int64_t header = size_in(header_, kObjectSize);
        return header < static_cast<std::int64_t>(kHeaderHead)
                   ? std::nullopt
                   : send_time(read_(from_ + header + kDataHead + number * size, kPacketHead));
    }

    std::int64_t from_;
    const ReadBytes& read_;
    std::string header_;
    std::string_view properties_;  ///< from the File Properties Object on
};

}  // namespace

std::vector<AsfPart> asf_parts(std::int64_t size, const ReadBytes& read) {
    std::vector<AsfPart> parts;
    for (std::int64_t at = 0; at < size && parts.size() < kMostParts;) {
        const PartReader part(at, read);
        if (!part.is_part()) {
            break;
        }
        const std::int64_t length = part.size().value_or(size - at);
        const std::int64_t behind = length < size - at ? at + length : size;
        parts.push_back({{at, behind}, length > size - at, part.seconds(), part.streams()});
        at = behind;
    }
    if (!parts.empty()) {
        parts.back().range.to = size;
    }
    return parts;
}

std::optional<double> length_of(const std::vector<AsfPart>& parts) {
    double sum = 0;
    for (const AsfPart& part : parts) {
        if (!part.seconds) {
            return std::nullopt;
        }
        sum += *part.seconds;
    }
    return sum > 0 ? std::optional(sum) : std::nullopt;
}

bool are_of_one_movie(const std::vector<AsfPart>& parts) {
    return parts.size() > 1 && length_of(parts) && !parts.front().streams.empty() &&
           std::all_of(parts.begin(), parts.end(), [&parts](const AsfPart& part) {
               return part.streams == parts.front().streams;
           });
}

std::string part_list(const std::vector<AsfPart>& parts, int file) {
    std::string list = "ffconcat version 1.0\n";
    for (const AsfPart& part : parts) {
        list += "file subfile,,start," + std::to_string(part.range.from) + ",end," +
                std::to_string(part.range.to) + ",,:file:/dev/fd/" + std::to_string(file) +
                "\nduration " + std::to_string(std::llround(part.seconds.value_or(0) * 1000)) +
                "ms\n";
    }
    return list;
}

}  // namespace bundle
