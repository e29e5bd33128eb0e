#include "mp4/kept_index.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "mp4/boxes.h"

namespace bundle {

std::optional<KeptIndex> keep_index(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const auto moov = find_moov(file);
    const std::uint64_t size = stream_size(file);
    if (!file || !moov) {
        return std::nullopt;
    }
    const std::size_t from = moov->start - kBoxHead;
    std::string bytes = read_range(file, {from, moov->end});
    return file ? std::optional(KeptIndex{from, std::move(bytes), size}) : std::nullopt;
}

bool put_back(const std::string& path, const KeptIndex& kept) {
    std::error_code error;
    std::filesystem::resize_file(path, kept.size, error);
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(kept.from));
    file.write(kept.bytes.data(), static_cast<std::streamsize>(kept.bytes.size()));
    file.close();
    return !error && file;
}

}  // namespace bundle
