#include "movie/probe_memory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace bundle {

namespace {

namespace fs = std::filesystem;

constexpr std::time_t kUnsureSeconds = 2;
// Some are left by runs that were canceled before their conversions.
constexpr std::chrono::hours kLongestKept{1};

fs::path folder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return runtime != nullptr && *runtime == '/' ? fs::path(runtime) / "vantreo" : fs::path();
}

std::string text_of(const timespec& time) {
    return std::to_string(time.tv_sec) + "." + std::to_string(time.tv_nsec);
}

/// Where the file's JSON is kept; empty: it is not.
fs::path place_of(const std::string& path) {
    struct stat status {};
    const fs::path kept = folder();
    if (kept.empty() || ::stat(path.c_str(), &status) != 0 ||
        ::time(nullptr) - status.st_ctim.tv_sec < kUnsureSeconds) {
        return {};
    }
    std::ostringstream name;
    name << status.st_dev << '-' << status.st_ino << '-' << status.st_size << '-'
         << text_of(status.st_mtim) << '-' << text_of(status.st_ctim);
    return kept / name.str();
}

bool is_old(const fs::path& file) {
    std::error_code none;
    const auto written = fs::last_write_time(file, none);
    return !none && fs::file_time_type::clock::now() - written > kLongestKept;
}

/// Removes old files, but not at each movie: a long list leaves many to look at.
void sweep(const fs::path& kept) {
    const fs::path swept = kept / "swept";
    std::error_code none;
    if (fs::exists(swept, none) && !is_old(swept)) {
        return;
    }
    for (const auto& file : fs::directory_iterator(kept, none)) {
        if (is_old(file)) {
            fs::remove(file, none);
        }
    }
    std::ofstream{swept};
}

}  // namespace

void remember_probe(const std::string& path, const nlohmann::json& probed) {
    const fs::path place = place_of(path);
    if (place.empty()) {
        return;
    }
    ::mkdir(place.parent_path().c_str(), S_IRWXU);
    sweep(place.parent_path());
    // A truncated text is not valid JSON, so `recall_probe` ignores it.
    std::ofstream(place, std::ios::binary)
        << probed.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::optional<nlohmann::json> recall_probe(const std::string& path) {
    const fs::path place = place_of(path);
    std::ifstream file(place, std::ios::binary);
    if (place.empty() || !file) {
        return std::nullopt;
    }
    auto probed = nlohmann::json::parse(file, nullptr, false);
    std::error_code none;
    fs::remove(place, none);
    return probed.is_object() ? std::optional(std::move(probed)) : std::nullopt;
}

}  // namespace bundle
