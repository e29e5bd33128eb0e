#include "output/private_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "core/console.h"
#include "core/files.h"

namespace bundle {

namespace {

// Short, so that the target may have the longest name that a folder allows.
constexpr std::string_view kPrefix = ".vantreo-";
constexpr std::string_view kSuffix = ".part";
constexpr std::size_t kRandomLength = 6;
constexpr int kAttempts = 5;

// More than is free on a disk where a write has failed.
constexpr std::size_t kProbeSize = 262144;

Failure failure(const char* what) {
    const int error = errno;
    return failure_by(write_cause(error), std::string(what) + ": " + std::strerror(error));
}

bool is_private_name(std::string_view name) {
    return name.size() == kPrefix.size() + kRandomLength + kSuffix.size() &&
           name.starts_with(kPrefix) && name.ends_with(kSuffix);
}

/// Removes the file when it is this user's and not locked.
void remove_if_stale(const std::string& path) {
    const UniqueFd file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_uid == ::geteuid() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(path.c_str());
    }
}

void sweep(const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    if (!entries) {
        return;
    }
    while (const dirent* entry = ::readdir(entries.get())) {
        if (is_private_name(entry->d_name)) {
            remove_if_stale(folder + "/" + entry->d_name);
        }
    }
}

/// True when the new file can be used: another run may have removed it before it was locked. A file
/// system without locks is used without them.
bool claim(int descriptor) {
    struct stat status {};
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        return false;
    }
    return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

/// The target's permissions, or a new file's.
mode_t target_mode(const std::string& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) {
        return status.st_mode & 0777;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// Writes the new name to the disk, where the file system can do that.
void flush_folder(const std::string& folder) {
    const UniqueFd opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) {
        (void)::fsync(opened.get());
    }
}

}  // namespace

Result<PrivateFile> PrivateFile::create(const std::string& target) {
    if (exists(target) && !is_regular_file(target)) {
        return failure_by(Cause::kTargetIsNoFile, "the output is not an ordinary file");
    }
    const std::string folder = folder_of(target);
    sweep(folder);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string path = folder + "/" + std::string(kPrefix) + std::string(kRandomLength, 'X') +
                           std::string(kSuffix);
        UniqueFd file(::mkostemps(path.data(), static_cast<int>(kSuffix.size()), O_CLOEXEC));
        if (!file) {
            return failure("cannot write in the output's folder");
        }
        if (claim(file.get())) {
            return PrivateFile(target, std::move(path), std::move(file));
        }
    }
    return Failure{"another run keeps removing files from the output's folder"};
}

PrivateFile::PrivateFile(std::string target, std::string path, UniqueFd descriptor)
    : target_(std::move(target)), path_(std::move(path)), descriptor_(std::move(descriptor)) {}

PrivateFile::PrivateFile(PrivateFile&& other) noexcept
    : target_(std::move(other.target_)),
      path_(std::exchange(other.path_, {})),
      descriptor_(std::move(other.descriptor_)),
      expected_(other.expected_),
      is_bound_(other.is_bound_) {}

PrivateFile::~PrivateFile() {
    if (!path_.empty()) {
        ::unlink(path_.c_str());
    }
}

void PrivateFile::replace_only(const std::optional<FileIdentity>& expected) {
    expected_ = expected;
    is_bound_ = true;
}

MaybeFailure PrivateFile::renew() {
    auto fresh = create(target_);
    if (!fresh) {
        return fresh.failure();
    }
    ::unlink(path_.c_str());
    path_ = std::exchange(fresh->path_, {});
    descriptor_ = std::move(fresh->descriptor_);
    return std::nullopt;
}

MaybeFailure PrivateFile::publish_whole(const StopSignals& stop) {
    if (auto failure = still_there()) {
        return failure;
    }
    if (file_size(path_) == 0) {
        return Failure{"nothing was written"};
    }
    if (stop.received() != 0) {
        return stop.failure();
    }
    return publish();
}

MaybeFailure PrivateFile::publish() {
    // A file system without permissions may refuse.
    (void)::fchmod(descriptor_.get(), target_mode(target_));
    if (::fsync(descriptor_.get()) != 0) {
        return failure("cannot write the output to the disk");
    }
    if (is_bound_ && identity_of(target_) != expected_) {
        return failure_by(Cause::kReplaced,
                          in_quotes(target_) + " was replaced or removed meanwhile");
    }
    if (::rename(path_.c_str(), target_.c_str()) != 0) {
        return failure("cannot put the output in its place");
    }
    path_.clear();
    flush_folder(folder_of(target_));
    return std::nullopt;
}

MaybeFailure PrivateFile::still_there() const {
    struct stat status {};
    struct stat found {};
    if (::fstat(descriptor_.get(), &status) == 0 && ::stat(path_.c_str(), &found) == 0 &&
        status.st_dev == found.st_dev && status.st_ino == found.st_ino) {
        return std::nullopt;
    }
    return failure_by(
        Cause::kFolderGone,
        "the output's folder, or the unfinished file in it, was removed or moved away");
}

MaybeFailure PrivateFile::takes_more() const {
    const std::string piece(kProbeSize, '\0');
    const off_t size = file_size(path_);
    ssize_t written = 0;
    off_t at = size;
    do {
        at += written;
        written = ::pwrite(descriptor_.get(), piece.data(), piece.size(), at);
    } while (written > 0 && at + written < size + static_cast<off_t>(kProbeSize));
    auto trouble =
        written < 0 ? MaybeFailure(failure("could not write to the disk")) : std::nullopt;
    [[maybe_unused]] const int cut = ::ftruncate(descriptor_.get(), size);
    return trouble;
}

MaybeFailure PrivateFile::trouble() const {
    auto gone = still_there();
    return gone ? gone : takes_more();
}

Failure PrivateFile::explained(Failure failure) const {
    if (const auto found = trouble()) {
        failure.message = found->message;
        failure.cause = found->cause;
    }
    return failure;
}

}  // namespace bundle
