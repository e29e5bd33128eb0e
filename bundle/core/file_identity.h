#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace bundle {

/// Which file lies at a path, and in which state: what replaces or changes it has another identity.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;  ///< of its last change
    std::int64_t nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// Empty when nothing lies there. A link has its own identity, not that of what it leads to.
std::optional<FileIdentity> identity_of(const std::string& path);

}  // namespace bundle
