#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bundle {

/// What adding tracks to an MP4 file changes: its index and its size.
struct KeptIndex {
    std::uint64_t from = 0;  ///< offset of `bytes` in the file
    std::string bytes;
    std::uint64_t size = 0;  ///< of the whole file
};

/// Empty when the file has no complete index.
std::optional<KeptIndex> keep_index(const std::string& path);

/// Restores the file after something was written over its index or appended. False when it can't be
/// written.
bool put_back(const std::string& path, const KeptIndex& kept);

}  // namespace bundle
