#include "clock/stream_clock.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <vector>

#include "clock/file_pieces.h"
#include "clock/transport_stream.h"
#include "core/files.h"

namespace bundle {

namespace {

constexpr int kPoints = 16;
constexpr std::array<std::int64_t, 3> kTails{std::int64_t{4} << 20, std::int64_t{1} << 20,
                                             std::int64_t{128} << 10};
constexpr int kMostReadings = 200;
// One picture of a Blu-ray disc may take 300 kB.
constexpr std::array<std::size_t, 2> kPieces{std::size_t{64} << 10, std::size_t{512} << 10};
constexpr double kUneven = 3;      // times as long as usual
constexpr double kReordering = 1;  // how far a time may lie before the one that comes first
constexpr double kTicks = 90'000;
constexpr double kWrap = 8'589'934'592.0 / kTicks;
constexpr std::size_t kHead = 6;  ///< of a packet of pictures: start code and length
constexpr std::size_t kTime = 5;
constexpr std::size_t kMostStuffing = 17;

/// Adds up the clock between points.
class Sum {
  public:
    /// `usual`: how many seconds a byte takes.
    Sum(const ReadClock& read, double usual, double longest_gap)
        : read_(read), usual_(usual), longest_gap_(longest_gap) {}

    double between(const ClockPoint& from, const ClockPoint& to) {
        const std::int64_t bytes = to.place - from.place;
        double seconds = to.seconds - from.seconds;
        seconds += seconds < -kWrap / 2 ? kWrap : 0;
        const double longest =
            std::max(longest_gap_, usual_ * kUneven * static_cast<double>(bytes));
        if (seconds >= -kReordering && seconds <= longest) {
            return seconds;
        }
        const auto middle = point_between(from, to);
        if (!middle) {
            has_jumped_ = has_jumped_ || seconds < -kReordering || seconds > longest_gap_;
            return std::min(usual_ * static_cast<double>(bytes), longest_gap_);
        }
        return between(from, *middle) + between(*middle, to);
    }

    bool has_jumped() const { return has_jumped_; }

  private:
    /// The first point after the middle, or after a place before it.
    std::optional<ClockPoint> point_between(const ClockPoint& from, const ClockPoint& to) {
        for (auto farther = (to.place - from.place) / 2; farther > 0; farther /= 2) {
            const auto point =
                readings_++ < kMostReadings ? read_(from.place + farther) : std::nullopt;
            if (point && point->place < to.place) {
                return point;
            }
        }
        return std::nullopt;
    }

    const ReadClock& read_;
    double usual_;
    double longest_gap_;
    int readings_ = 0;
    bool has_jumped_ = false;
};

/// How many seconds a byte takes where the clock does not jump.
double usual(const std::vector<ClockPoint>& points) {
    std::vector<double> rates;
    for (std::size_t at = 1; at < points.size(); ++at) {
        rates.push_back((points[at].seconds - points[at - 1].seconds) /
                        static_cast<double>(points[at].place - points[at - 1].place));
    }
    const auto middle = rates.begin() + static_cast<std::ptrdiff_t>(rates.size() / 2);
    std::nth_element(rates.begin(), middle, rates.end());
    return std::max(*middle, 0.0);
}

unsigned at(const std::string& bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

/// Where in the head of a packet of an MPEG-2 stream its time is, if it has one (2.4.3.7).
std::size_t time_place(const std::string& bytes, std::size_t head) {
    return (at(bytes, head + 1) & 0x80) != 0 ? head + 3 : bytes.size();
}

/// The same for MPEG-1 (ISO/IEC 11172-1, 2.4.3.3): behind stuffing and the size of a buffer.
std::size_t older_time_place(const std::string& bytes, std::size_t head) {
    const std::size_t end = std::min(bytes.size(), head + kMostStuffing);
    while (head < end && at(bytes, head) == 0xFF) {
        ++head;
    }
    return head < end && (at(bytes, head) & 0xC0) == 0x40 ? head + 2 : head;
}

/// The time of the packet of pictures at the place; empty when there is none.
std::optional<double> time_at(const std::string& bytes, std::size_t place) {
    if (bytes.size() < place + kHead + 2 || bytes.compare(place, 3, "\0\0\1", 3) != 0 ||
        (at(bytes, place + 3) & 0xF0) != 0xE0) {
        return std::nullopt;
    }
    const std::size_t head = place + kHead;
    const bool is_mpeg2 = (at(bytes, head) & 0xC0) == 0x80;
    const std::size_t time = is_mpeg2 ? time_place(bytes, head) : older_time_place(bytes, head);
    if (bytes.size() < time + kTime || (at(bytes, time) & 0xE1) != 0x21) {
        return std::nullopt;
    }
    const auto high = static_cast<double>(at(bytes, time) >> 1 & 7);
    const unsigned middle = at(bytes, time + 1) << 7 | at(bytes, time + 2) >> 1;
    const unsigned low = at(bytes, time + 3) << 7 | at(bytes, time + 4) >> 1;
    return (high * (1 << 30) + static_cast<double>(middle << 15 | low)) / kTicks;
}

/// The number of the transport packet's stream when the place in it begins a packet of its content
/// (2.4.3.2); empty when there is no such packet or it begins elsewhere.
std::optional<int> stream_beginning_at(const std::string& bytes, std::size_t place) {
    for (std::size_t head = place >= 188 ? place - 188 : 0; head + 4 <= place; ++head) {
        if (at(bytes, head) != 0x47 || (at(bytes, head + 1) & 0x40) == 0) {
            continue;
        }
        const bool has_field = (at(bytes, head + 3) & 0x20) != 0;
        if (head + 4 + (has_field ? at(bytes, head + 4) + 1 : 0) == place) {
            return static_cast<int>((at(bytes, head + 1) & 0x1F) << 8 | at(bytes, head + 2));
        }
    }
    return std::nullopt;
}

/// Reads the times of the picture, also where the number (PID) of its stream changes.
class StreamReader {
  public:
    explicit StreamReader(const std::string& path) : file_(path, std::ios::binary) {}

    std::optional<ClockPoint> first_time(std::int64_t place) {
        std::optional<ClockPoint> point;
        std::string piece;
        for (const std::size_t size : kPieces) {
            if (!point) {
                piece = read_piece(file_, place, size);
                point = known_time(piece);
            }
        }
        point = point ? point : new_time(piece);
        if (point) {
            point->place += place;
        }
        return point;
    }

    std::size_t pids() const { return pids_.size(); }

  private:
    std::optional<ClockPoint> known_time(const std::string& piece) {
        std::optional<ClockPoint> first;
        for (int pid : pids_) {
            const auto point = first_time_in(piece, pid);
            if (point && (!first || point->place < first->place)) {
                first = point;
            }
        }
        return first;
    }

    /// Where a known stream has packets, but no times, the other ones are another programme.
    std::optional<ClockPoint> new_time(const std::string& piece) {
        if (std::any_of(pids_.begin(), pids_.end(),
                        [&piece](int known) { return has_packet_of(piece, known); })) {
            return std::nullopt;
        }
        int pid = -1;
        const auto point = first_time_in(piece, pid);
        if (point) {
            pids_.insert(pid);
        }
        return point;
    }

    std::ifstream file_;
    std::set<int> pids_;
};

/// Points spread over a movie of so many bytes and, so that its end is not guessed, near that.
std::vector<ClockPoint> spread_points(std::int64_t size, const ReadClock& read) {
    std::vector<ClockPoint> points;
    const auto add = [&](std::int64_t place) {
        const auto point = read(place);
        if (point && (points.empty() || point->place > points.back().place)) {
            points.push_back(*point);
        }
    };
    for (int part = 0; part <= kPoints; ++part) {
        add(size / (kPoints + 1) * part);
    }
    for (const std::int64_t tail : kTails) {
        if (!points.empty() && size - tail > points.back().place) {
            add(size - tail);
        }
    }
    return points;
}

}  // namespace

std::optional<ClockPoint> first_time_in(const std::string& piece, int& pid) {
    const std::string start("\0\0\1", 3);
    for (auto place = piece.find(start); place != piece.npos;
         place = piece.find(start, place + 1)) {
        const auto seconds = time_at(piece, place);
        if (!seconds) {
            continue;
        }
        const int stream = stream_beginning_at(piece, place).value_or(-1);
        if (pid < 0 || stream == pid) {
            pid = stream;
            return ClockPoint{static_cast<std::int64_t>(place), *seconds};
        }
    }
    return std::nullopt;
}

std::optional<double> length_without_jumps(std::int64_t size, const ReadClock& read,
                                           double longest_gap) {
    const std::vector<ClockPoint> points = spread_points(size, read);
    if (points.size() < 2) {
        return std::nullopt;
    }
    Sum sum(read, usual(points), longest_gap);
    double seconds = 0;
    for (std::size_t at = 1; at < points.size(); ++at) {
        seconds += sum.between(points[at - 1], points[at]);
    }
    // What comes after the last point is as long for its size as the rest.
    const auto measured = static_cast<double>(points.back().place - points.front().place);
    return sum.has_jumped() ? std::optional(seconds * static_cast<double>(size) / measured)
                            : std::nullopt;
}

StreamLength length_of_stream(const std::string& path) {
    StreamReader reader(path);
    const ReadClock read = [&reader](std::int64_t place) { return reader.first_time(place); };
    const auto length = length_without_jumps(file_size(path), read);
    return {length, reader.pids() > 1};
}

}  // namespace bundle
