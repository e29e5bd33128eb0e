#include "clock/file_pieces.h"

#include <unistd.h>

#include <algorithm>

namespace bundle {

namespace {

constexpr std::int64_t kScan = std::int64_t{1} << 20;

// A browser's clusters may hold some seconds.
constexpr std::int64_t kFarthestCluster = std::int64_t{4} << 20;

/// The piece from its first cluster to its last one, or with all of a single one that begins in it.
ByteRange cut_at_clusters(int file, std::int64_t size, ByteRange piece) {
    const std::int64_t length = piece.to - piece.from;
    if (piece.from > 0) {
        piece.from =
            cluster_behind(file, piece.from, std::min(size, piece.from + kFarthestCluster));
    }
    piece.to = std::min(piece.from + length, size);
    const std::string bytes = read_piece(file, piece.from, piece.to - piece.from);
    const std::size_t last = bytes.rfind(kCluster);
    if (last != std::string::npos && last > bytes.find(kCluster)) {
        piece.to = piece.from + static_cast<std::int64_t>(last);
    }
    return piece;
}

}  // namespace

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

std::string read_piece(std::istream& file, std::int64_t from, std::size_t size) {
    std::string piece(size, '\0');
    file.clear();
    file.seekg(from);
    file.read(piece.data(), static_cast<std::streamsize>(size));
    piece.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return piece;
}

std::uint64_t little(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t byte = width; byte > 0 && at + width <= bytes.size(); --byte) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + byte - 1]);
    }
    return value;
}

std::int64_t cluster_behind(int file, std::int64_t from, std::int64_t size) {
    constexpr std::int64_t kOverlap = kCluster.size() - 1;
    for (std::int64_t at = from; at < size; at += kScan - kOverlap) {
        const std::size_t found = read_piece(file, at, kScan).find(kCluster);
        if (found != std::string::npos) {
            return at + static_cast<std::int64_t>(found);
        }
    }
    return size;
}

std::vector<ByteRange> spread_pieces(int file, std::int64_t size, int count, std::int64_t length) {
    if (size <= count * length) {
        return {{0, size}};
    }
    const bool is_matroska = read_piece(file, 0, kMatroska.size()) == kMatroska;
    std::vector<ByteRange> pieces;
    for (int i = 0; i < count; ++i) {
        const std::int64_t from = (size - length) / (count - 1) * i;
        const ByteRange piece{from, from + length};
        pieces.push_back(is_matroska ? cut_at_clusters(file, size, piece) : piece);
    }
    return pieces;
}

}  // namespace bundle
