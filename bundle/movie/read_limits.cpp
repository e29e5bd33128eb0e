#include "movie/read_limits.h"

#include <algorithm>
#include <fstream>

namespace bundle {

namespace {

constexpr std::int64_t kPiece = std::int64_t{256} << 10;

bool holds_zeros(std::istream& file, std::int64_t at) {
    std::string piece(static_cast<std::size_t>(kPiece), '\0');
    file.seekg(at);
    file.read(piece.data(), static_cast<std::streamsize>(kPiece));
    const auto end = piece.begin() + file.gcount();
    file.clear();
    return std::all_of(piece.begin(), end, [](char c) { return c == '\0'; });
}

}  // namespace

bool looks_blank(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::int64_t size = file.tellg();
    if (size <= 0) {
        return false;
    }
    for (const std::int64_t at :
         {std::int64_t{0}, size / 2, std::max(size - kPiece, std::int64_t{0})}) {
        if (!holds_zeros(file, at)) {
            return false;
        }
    }
    return true;
}

}  // namespace bundle
