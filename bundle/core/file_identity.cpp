#include "core/file_identity.h"

#include <sys/stat.h>

namespace bundle {

std::optional<FileIdentity> identity_of(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
#ifdef __APPLE__
    const timespec changed = status.st_mtimespec;
#else
    const timespec changed = status.st_mtim;
#endif
    return FileIdentity{status.st_dev, status.st_ino, status.st_size, changed.tv_sec,
                        changed.tv_nsec};
}

}  // namespace bundle
