#include "output/note_place.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "core/files.h"
#include "core/formatted.h"

namespace bundle {

namespace {

constexpr std::string_view kSuffix = ".failed.txt";
constexpr std::size_t kLongestName = 255;

/// "~" and the FNV-1a hash of the name in eight hexadecimal digits.
std::string short_mark(std::string_view name) {
    std::uint32_t hash = 2166136261;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
    }
    return formatted("~%08x", static_cast<unsigned>(hash));
}

std::string name_of(const std::string& path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

/// As much of the name as fits, the mark and the suffix.
std::string marked(const std::string& name, const std::string& mark) {
    std::size_t length = std::min(name.size(), kLongestName - kSuffix.size() - mark.size());
    // Not in the middle of a character.
    while (length > 0 && length < name.size() && (name[length] & 0xC0) == 0x80) {
        --length;
    }
    return name.substr(0, length) + mark + std::string(kSuffix);
}

std::string absolute(const std::string& path) {
    std::error_code none;
    return std::filesystem::absolute(path, none).lexically_normal().string();
}

}  // namespace

std::string note_path(const std::string& output) {
    const std::string name = name_of(output);
    if (name.size() + kSuffix.size() <= kLongestName) {
        return output + std::string(kSuffix);
    }
    return output.substr(0, output.size() - name.size()) + marked(name, short_mark(name));
}

std::vector<std::string> note_places(const Subject& subject) {
    const std::string away = marked(name_of(subject.output), short_mark(absolute(subject.output)));
    std::vector<std::string> places{note_path(subject.output)};
    if (!subject.source.empty()) {
        places.push_back(folder_of(absolute(subject.source)) + "/" + away);
    }
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/') {
        places.push_back(std::string(home) + "/" + away);
    }
    return places;
}

}  // namespace bundle
