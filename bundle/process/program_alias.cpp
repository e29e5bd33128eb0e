#include "process/program_alias.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

#include "core/files.h"

namespace bundle {

namespace {

constexpr std::string_view kPrefix = "vantreo-alias-";
constexpr std::string_view kRandom = "XXXXXX";
constexpr int kAttempts = 5;

/// The locked folder; none when it is not this user's, or in use.
UniqueFd locked(const std::string& folder) {
    UniqueFd opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    const bool is_ours =
        opened && ::fstat(opened.get(), &status) == 0 && status.st_uid == ::geteuid();
    return is_ours && ::flock(opened.get(), LOCK_EX | LOCK_NB) == 0 ? std::move(opened)
                                                                    : UniqueFd();
}

/// Removes the folder when it holds nothing but the link.
void remove_if_stale(const std::string& folder, const std::string& name) {
    const UniqueFd lock = locked(folder);
    struct stat status {};
    if (lock && ::fstatat(lock.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISLNK(status.st_mode)) {
        ::unlinkat(lock.get(), name.c_str(), 0);
    }
    if (lock) {
        ::rmdir(folder.c_str());
    }
}

void sweep(const std::string& parent, const std::string& name) {
    std::error_code error;
    std::filesystem::directory_iterator entries(parent, error);
    while (!error && entries != std::filesystem::directory_iterator()) {
        const std::string found = entries->path().filename().string();
        if (found.starts_with(kPrefix) && found.size() == kPrefix.size() + kRandom.size()) {
            remove_if_stale(entries->path().string(), name);
        }
        entries.increment(error);
    }
}

Failure failure(const std::string& path) {
    return {"cannot make " + path + ": " + std::strerror(errno)};
}

}  // namespace

Result<ProgramAlias> ProgramAlias::create(const std::string& program, const std::string& name) {
    if (name.empty()) {
        return ProgramAlias({}, program, {});
    }
    const std::string parent = temporary_folder();
    sweep(parent, name);
    const std::string pattern = (parent + "/").append(kPrefix).append(kRandom);
    Failure last{};
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string folder = pattern;
        if (::mkdtemp(folder.data()) == nullptr) {
            return failure(folder);
        }
        // Before it is locked, another run may take it for a stale one. Where nothing can be locked
        // the last attempt goes without.
        ProgramAlias alias(folder, std::string(folder).append("/").append(name), locked(folder));
        const bool is_safe = alias.lock_ || attempt + 1 == kAttempts;
        if (is_safe && ::symlink(program.c_str(), alias.path_.c_str()) == 0) {
            return alias;
        }
        last = failure(alias.path_);
    }
    return last;
}

ProgramAlias::ProgramAlias(std::string folder, std::string path, UniqueFd lock)
    : folder_(std::move(folder)), path_(std::move(path)), lock_(std::move(lock)) {}

ProgramAlias::ProgramAlias(ProgramAlias&& other) noexcept
    : folder_(std::exchange(other.folder_, {})),
      path_(std::move(other.path_)),
      lock_(std::move(other.lock_)) {}

ProgramAlias::~ProgramAlias() {
    if (!folder_.empty()) {
        ::unlink(path_.c_str());
        ::rmdir(folder_.c_str());
    }
}

}  // namespace bundle
