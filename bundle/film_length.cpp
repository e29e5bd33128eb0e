#include "film_length.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "ffprobe.h"
#include "files.h"
#include "numbers.h"
#include "unique_fd.h"

namespace bundle {

namespace {

constexpr std::int64_t kHead = std::int64_t{2} << 20;
// A cluster of a browser's recording may hold half a minute.
constexpr std::array<std::int64_t, 3> kTails{std::int64_t{8} << 20, std::int64_t{32} << 20,
                                             std::int64_t{128} << 20};

constexpr std::string_view kMatroska = "\x1A\x45\xDF\xA3";
constexpr std::string_view kCluster = "\x1F\x43\xB6\x75";

std::string read_piece(int file, std::int64_t from, std::int64_t size) {
    std::string piece(static_cast<std::size_t>(size), '\0');
    std::size_t filled = 0;
    while (filled < piece.size()) {
        const ssize_t count = ::pread(file, piece.data() + filled, piece.size() - filled,
                                      from + static_cast<off_t>(filled));
        if (count <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    piece.resize(filled);
    return piece;
}

/// Where the head ends and the tail begins, so that nothing is cut in its middle.
void trim_to_clusters(std::string& head, std::string& tail) {
    if (head.starts_with(kMatroska)) {
        head.resize(std::min(head.rfind(kCluster), head.size()));
        tail.erase(0, std::min(tail.find(kCluster), tail.size()));
    }
}

/// The file's beginning and its last `tail_size` bytes, or all of a smaller file.
std::string shortened(int file, std::int64_t size, std::int64_t tail_size) {
    if (size <= kHead + tail_size) {
        return read_piece(file, 0, size);
    }
    std::string head = read_piece(file, 0, kHead);
    std::string tail = read_piece(file, size - tail_size, tail_size);
    trim_to_clusters(head, tail);
    return head + tail;
}

/// The end of a packet in a line "START,LENGTH,...": the length may be untold.
std::optional<double> packet_end(std::string_view line) {
    const std::size_t cut = std::min(line.find(','), line.size());
    const auto start = parse_decimal(line.substr(0, cut));
    const std::string_view rest = line.substr(std::min(cut + 1, line.size()));
    const auto length = parse_decimal(rest.substr(0, rest.find(',')));
    return start ? std::optional(*start + length.value_or(0)) : std::nullopt;
}

std::optional<double> last_end(std::string_view film, const StopSignals& stop) {
    const auto input = nameless_file(film);
    if (!input) {
        return std::nullopt;
    }
    std::optional<double> last;
    const auto failure =
        read_packets(input->get(), "pts_time,duration_time", stop,
                     [&last](std::string_view line) { last = std::max(last, packet_end(line)); });
    return failure ? std::nullopt : last;
}

}  // namespace

std::optional<double> end_of_packets(const std::string& path, const StopSignals& stop) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const std::int64_t size = file_size(path);
    for (const std::int64_t tail_size : kTails) {
        const std::string film = shortened(file.get(), size, tail_size);
        const auto end = last_end(film, stop);
        if (end || size <= kHead + tail_size || stop.received() != 0) {
            return end;
        }
    }
    return std::nullopt;
}

}  // namespace bundle
