#include "process/system_tools.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "core/console.h"
#include "core/files.h"

#ifdef __APPLE__
#include <mach-o/dyld.h>

#include <array>
#endif

namespace bundle {

namespace {

std::filesystem::path own_executable() {
    std::error_code error;
#ifdef __APPLE__
    // Not tried: only Linux builds have been run.
    std::array<char, 4096> buffer{};
    auto size = static_cast<std::uint32_t>(buffer.size());
    if (_NSGetExecutablePath(buffer.data(), &size) != 0) {
        return {};
    }
    return std::filesystem::canonical(buffer.data(), error);
#else
    return std::filesystem::read_symlink("/proc/self/exe", error);
#endif
}

bool is_our_own(const std::string& candidate) {
    const std::filesystem::path self = own_executable();
    for (const char* tool : {"ffmpeg", "MP4Box"}) {
        if (same_file(candidate, (self.parent_path() / tool).string())) {
            return true;
        }
    }
    return same_file(candidate, self.string());
}

bool is_usable(const std::string& candidate) {
    return is_regular_file(candidate) && ::access(candidate.c_str(), X_OK) == 0 &&
           !is_our_own(candidate);
}

}  // namespace

Result<std::string> find_system_tool(const std::string& name, const char* variable) {
    const char* named = std::getenv(variable);
    if (named != nullptr && *named != '\0') {
        if (*named == '/' && is_usable(named)) {
            return std::string(named);
        }
        return failure_by(Cause::kToolMissing,
                          std::string(variable) +
                              " does not name a program by its full path: " + in_quotes(named));
    }
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (!folder.starts_with('/')) {
            continue;
        }
        const std::string& candidate = folder.append("/").append(name);
        if (is_usable(candidate)) {
            return candidate;
        }
    }
    return failure_by(Cause::kToolMissing, "the system's " + name +
                                               " is missing: it is in no folder of PATH, and " +
                                               variable + " is not set");
}

std::string beside_this_tool(const std::string& name) {
    return (own_executable().parent_path() / name).string();
}

Result<std::string> find_ffmpeg() {
    return find_system_tool("ffmpeg", "VANTREO_FFMPEG");
}

Result<std::string> find_ffprobe() {
    return find_system_tool("ffprobe", "VANTREO_FFPROBE");
}

}  // namespace bundle
