#include "clock/matroska_end.h"

#include <fcntl.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "clock/file_pieces.h"
#include "core/files.h"
#include "core/json_reading.h"
#include "core/numbers.h"
#include "core/unique_fd.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr std::int64_t kHead = std::int64_t{64} << 10;
constexpr std::int64_t kTail = std::int64_t{2} << 20;

constexpr std::string_view kTimestampScale = "\x2A\xD7\xB1";
constexpr char kTimestamp = '\xE7';
constexpr std::string_view kChecksum = "\xBF\x84";
constexpr std::size_t kChecksumSize = 6;

// Nanoseconds per tick where nothing else is said.
constexpr double kUsualScale = 1e6;

/// The unsigned number of an element whose size, in one byte, is at the beginning.
std::optional<double> number_at(std::string_view bytes) {
    const std::size_t size = bytes.empty() ? 0 : static_cast<unsigned char>(bytes[0]) & 0x7FU;
    if (size == 0 || size > 8 || bytes.size() <= size) {
        return std::nullopt;
    }
    double value = 0;
    for (const char c : bytes.substr(1, size)) {
        value = value * 256 + static_cast<unsigned char>(c);
    }
    return value;
}

/// How many bytes an element's size takes that begins with this byte.
std::size_t length_of_size(unsigned char first) {
    std::size_t length = 1;
    for (; length < 8 && (first & (0x100U >> length)) == 0; ++length) {
    }
    return length;
}

/// The time of a cluster, in ticks, by what follows its name.
std::optional<double> cluster_ticks(std::string_view bytes) {
    if (bytes.empty()) {
        return std::nullopt;
    }
    bytes.remove_prefix(
        std::min(bytes.size(), length_of_size(static_cast<unsigned char>(bytes[0]))));
    if (bytes.starts_with(kChecksum)) {
        bytes.remove_prefix(std::min(bytes.size(), kChecksumSize));
    }
    return bytes.starts_with(kTimestamp) ? number_at(bytes.substr(1)) : std::nullopt;
}

double scale_in(std::string_view head) {
    const std::size_t at = head.find(kTimestampScale);
    return at == head.npos
               ? kUsualScale
               : number_at(head.substr(at + kTimestampScale.size())).value_or(kUsualScale);
}

bool is_too_short(double length, const json& format, const std::string& path) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const std::int64_t tail = std::max<std::int64_t>(0, file_size(path) - kTail);
    const auto last =
        last_cluster_time(read_piece(file.get(), 0, kHead), read_piece(file.get(), tail, kTail));
    return last && *last - parse_decimal(text(format, "start_time")).value_or(0) > length;
}

void drop_lengths(json& probed) {
    probed["format"].erase("duration");
    for (json& stream : probed["streams"]) {
        stream.erase("duration");
        if (stream.contains("tags")) {
            stream["tags"].erase("DURATION");
            stream["tags"].erase("DURATION-eng");
        }
    }
}

}  // namespace

std::optional<double> last_cluster_time(std::string_view head, std::string_view tail) {
    const std::size_t at = tail.rfind(kCluster);
    const auto ticks =
        at == tail.npos ? std::nullopt : cluster_ticks(tail.substr(at + kCluster.size()));
    return ticks ? std::optional(*ticks * scale_in(head) / 1e9) : std::nullopt;
}

void drop_short_length(json& probed, const std::string& path) {
    const json& format = member(probed, "format");
    const auto length = parse_decimal(text(format, "duration"));
    if (length && text(format, "format_name").starts_with("matroska") &&
        is_too_short(*length, format, path)) {
        drop_lengths(probed);
    }
}

}  // namespace bundle
