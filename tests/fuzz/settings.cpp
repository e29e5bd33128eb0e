// A settings file that holds anything: read, written, and read again.

#include "settings/settings.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "app/utf8.h"
#include "fuzz/require.h"
#include "settings/settings_file.h"

namespace {

const std::array<const char*, 5> kKeys = {"Overwrite", "HowToMove", "Output", "Optimize",
                                          "Language"};

/// A file of this process in memory, where the system has such a place.
std::string settings_file() {
    const std::string folder = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
    return folder + "/fuzz settings " + std::to_string(::getpid()) + ".ini";
}

/// Values that no file can hold any other way than quoted.
wxString awkward_value(std::string_view text) {
    const std::string_view piece =
        text.substr(text.size() - std::min<std::size_t>(text.size(), 40));
    wxString value = text_from_utf8(piece);
    value.Replace(wxString(wxUniChar(0)), "");
    return value.empty() ? wxString(L" \"\u0441\\n=[") : value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static const std::string path = settings_file();
    std::ofstream(path, std::ios::binary) << text;
    const wxString value = awkward_value(text);
    {
        const auto config = open_settings(path);
        for (const char* key : kKeys)
            REQUIRE(!read_setting(*config, key, "English").empty());
        REQUIRE(read_setting(*config, "Shutdown", "English") == "false");
        for (const char* key : kKeys) {
            write_setting(*config, key, value);
            REQUIRE(read_setting(*config, key, "English") == value);
        }
    }
    const auto config = open_settings(path);
    for (const char* key : kKeys)
        REQUIRE(read_setting(*config, key, "English") == value);
    std::filesystem::remove(path);
    return 0;
}
