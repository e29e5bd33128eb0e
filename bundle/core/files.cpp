#include "core/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

namespace bundle {

bool same_file(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool is_regular_file(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool exists(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

std::int64_t file_size(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

bool is_newer(const std::string& path, const std::string& than) {
    struct stat one {};
    struct stat other {};
    if (::stat(path.c_str(), &one) != 0 || ::stat(than.c_str(), &other) != 0) {
        return false;
    }
    return std::pair(one.st_mtim.tv_sec, one.st_mtim.tv_nsec) >
           std::pair(other.st_mtim.tv_sec, other.st_mtim.tv_nsec);
}

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string file_url(const std::string& path) {
    return "file:" + path;
}

MaybeFailure check_input(const std::string& path) {
    if (::access(path.c_str(), R_OK) != 0) {
        return Failure{std::string("cannot read the input: ") + std::strerror(errno)};
    }
    if (!is_regular_file(path)) {
        return Failure{"the input is not an ordinary file"};
    }
    return std::nullopt;
}

std::string temporary_folder() {
    std::error_code none;
    auto folder = std::filesystem::temp_directory_path(none).string();
    return none ? "/tmp" : folder;
}

Result<UniqueFd> nameless_file(std::string_view text) {
    std::string path = temporary_folder() + "/vantreo-XXXXXX";
    UniqueFd file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file) {
        return Failure{"cannot make a file in " + path + ": " + std::strerror(errno)};
    }
    ::unlink(path.c_str());
    while (!text.empty()) {
        const ssize_t written = ::write(file.get(), text.data(), text.size());
        if (written <= 0) {
            return Failure{std::string("cannot write a temporary file: ") + std::strerror(errno)};
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    ::lseek(file.get(), 0, SEEK_SET);
    return file;
}

}  // namespace bundle
