#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace bundle {

/// Identifies a file and its state: a file that replaces it, or any change, has another identity.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;  ///< of the last change
    std::int64_t nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// Empty when the path does not exist. A link has its own identity, not that of its target.
std::optional<FileIdentity> identity_of(const std::string& path);

}  // namespace bundle
