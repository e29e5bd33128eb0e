#include "clock/packet_ends.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "clock/file_pieces.h"
#include "core/files.h"
#include "core/numbers.h"
#include "core/unique_fd.h"
#include "process/ffprobe.h"
#include "process/pipe_feed.h"

namespace bundle {

namespace {

constexpr std::int64_t kHead = std::int64_t{2} << 20;
// The larger ones are for clusters: one of a browser's recording may hold half a minute.
constexpr std::array<std::int64_t, 3> kTails{std::int64_t{2} << 20, std::int64_t{8} << 20,
                                             std::int64_t{32} << 20};

/// Where the head ends, so that it is not cut in the middle of a cluster.
std::int64_t head_end(std::string_view head) {
    const std::size_t cluster = head.starts_with(kMatroska) ? head.rfind(kCluster) : head.npos;
    return static_cast<std::int64_t>(std::min(cluster, head.size()));
}

/// The file's beginning and its last `tail_size` bytes, or all of a smaller file.
std::vector<ByteRange> shortened(int file, std::int64_t size, std::int64_t tail_size) {
    if (size <= kHead + tail_size) {
        return {{0, size}};
    }
    const std::string head = read_piece(file, 0, kHead);
    const std::int64_t tail = size - tail_size;
    return {{0, head_end(head)},
            {head.starts_with(kMatroska) ? cluster_behind(file, tail, size) : tail, size}};
}

/// The next of the values that commas part, taken off the line.
std::string_view next_value(std::string_view& line) {
    const std::size_t cut = std::min(line.find(','), line.size());
    const std::string_view value = line.substr(0, cut);
    line.remove_prefix(std::min(cut + 1, line.size()));
    return value;
}

/// Gathers the ends of packets out of lines "STREAM,START,LENGTH,PLACE,..."; all but the stream may
/// be missing.
class EndsFinder {
  public:
    /// Wanted streams that have no packet at or behind the place `tail` are not seen near the end.
    EndsFinder(const std::set<int>& wanted, std::int64_t tail) : wanted_(wanted), tail_(tail) {}

    void add(std::string_view line) {
        const auto stream = parse_integer(next_value(line));
        const auto start = parse_decimal(next_value(line));
        const auto length = parse_decimal(next_value(line));
        const auto place = parse_integer(next_value(line));
        if (!stream || !start) {
            return;
        }
        const double end = *start + length.value_or(0);
        any_ = std::max(any_, std::optional(end));
        if (wanted_.contains(static_cast<int>(*stream))) {
            last_wanted_ = std::max(last_wanted_, std::optional(end));
            in_tail_ = in_tail_ || tail_ == 0 || (place && *place >= tail_);
        }
    }

    std::optional<PacketEnds> ends() const {
        const auto wanted = in_tail_ ? last_wanted_ : std::nullopt;
        return any_ ? std::optional(PacketEnds{*any_, wanted}) : std::nullopt;
    }

  private:
    const std::set<int>& wanted_;
    std::int64_t tail_;
    std::optional<double> any_;
    std::optional<double> last_wanted_;
    bool in_tail_ = false;
};

std::optional<PacketEnds> ends_in(int file, const std::vector<ByteRange>& pieces,
                                  const std::set<int>& wanted,
                                  const std::vector<std::string>& options,
                                  const StopSignals& stop) {
    const auto input = PipeFeed::start(file, pieces);
    if (!input) {
        return std::nullopt;
    }
    EndsFinder finder(wanted, pieces.size() > 1 ? pieces.front().to : 0);
    const auto failure =
        read_packets(input->reader(), options, "stream_index,pts_time,duration_time,pos", stop,
                     [&finder](std::string_view line) { finder.add(line); });
    return failure ? std::nullopt : finder.ends();
}

}  // namespace

std::optional<PacketEnds> packet_ends(const std::string& path, const std::set<int>& wanted,
                                      const std::vector<std::string>& options,
                                      const StopSignals& stop) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const std::int64_t size = file_size(path);
    std::optional<PacketEnds> ends;
    for (const std::int64_t tail_size : kTails) {
        ends = ends_in(file.get(), shortened(file.get(), size, tail_size), wanted, options, stop);
        if ((ends && ends->wanted) || size <= kHead + tail_size || stop.received() != 0) {
            break;
        }
    }
    return ends;
}

std::optional<double> end_of_part(int file, const ByteRange& part, const StopSignals& stop) {
    const auto ends = ends_in(file, {part}, {}, {}, stop);
    return ends ? std::optional(ends->any) : std::nullopt;
}

}  // namespace bundle
