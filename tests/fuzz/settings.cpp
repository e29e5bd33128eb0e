// A settings file of any bytes: read, written, read again, and compared with a plain wxFileConfig.

#include "settings/settings.h"

#include <unistd.h>
#include <wx/convauto.h>
#include <wx/crt.h>
#include <wx/log.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"
#include "fuzz/require.h"
#include "settings/settings_file.h"

namespace {

namespace fs = std::filesystem;

const std::array<const char*, 5> kKeys = {"Overwrite", "HowToMove", "Output", "Optimize",
                                          "Language"};

/// Formats the toolkit's messages, which can fail an assertion too.
class UnseenLog : public wxLog {
    void DoLogRecord(wxLogLevel, const wxString&, const wxLogRecordInfo&) override {}
};

/// A file of this process, in memory if the system supports that.
std::string settings_file() {
    const std::string folder = fs::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
    return folder + "/fuzz settings " + std::to_string(::getpid()) + ".ini";
}

std::string content_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Values that must be quoted in a file.
wxString awkward_value(std::string_view text) {
    const std::string_view piece =
        text.substr(text.size() - std::min<std::size_t>(text.size(), 40));
    wxString value = text_from_utf8(piece);
    value.Replace(wxString(wxUniChar(0)), "");
    return value.empty() ? wxString(L" \"\u0441\\n=[") : value;
}

bool is_key(const wxString& name) {
    return std::any_of(kKeys.begin(), kKeys.end(),
                       [&](const char* key) { return name.CmpNoCase(key) == 0; });
}

/// Values by full name, but for names that cannot be asked for, and for those of several entries,
/// as locked ones can be: which of them the toolkit finds depends on how many others there are.
using Entries = std::map<wxString, wxString>;

void add_entries(wxFileConfig& config, const wxString& group, Entries& entries) {
    config.SetPath("/" + group);
    wxString name;
    long index = 0;
    std::map<wxString, int> count;
    for (bool any = config.GetFirstEntry(name, index); any; any = config.GetNextEntry(name, index))
        ++count[name.Lower()];
    for (bool any = config.GetFirstEntry(name, index); any; any = config.GetNextEntry(name, index))
        if (!name.Contains("/") && count[name.Lower()] == 1)
            entries[group + "/" + name] = config.Read(name, "");
    std::vector<wxString> groups;
    for (bool any = config.GetFirstGroup(name, index); any; any = config.GetNextGroup(name, index))
        groups.push_back(name);
    for (const wxString& inner : groups)
        add_entries(config, group + "/" + inner, entries);
}

Entries entries_of(wxFileConfig& config) {
    Entries entries;
    add_entries(config, "", entries);
    config.SetPath("/");
    return entries;
}

Entries entries_of_others(wxFileConfig& config) {
    Entries entries = entries_of(config);
    std::erase_if(entries, [](const auto& entry) { return is_key(entry.first.Mid(1)); });
    return entries;
}

/// The file as wxFileConfig itself reads it.
Entries plain_entries(const wxString& path) {
    const wxAssertHandler_t handler = wxSetAssertHandler(nullptr);
    wxFileConfig config("", "", path, "", wxCONFIG_USE_LOCAL_FILE, wxConvAuto());
    wxSetAssertHandler(handler);
    config.SetExpandEnvVars(false);
    return entries_of(config);
}

wxString decoded(const std::string& bytes) {
    return wxString(bytes.data(), wxConvAuto(), bytes.size());
}

std::vector<wxString> lines_of(const wxString& text) {
    std::vector<wxString> lines(1);
    for (auto c = text.begin(); c != text.end(); ++c) {
        if (*c != '\r' && *c != '\n') {
            lines.back() += *c;
            continue;
        }
        if (*c == '\r' && c + 1 != text.end() && *(c + 1) == '\n')
            ++c;
        lines.emplace_back();
    }
    if (lines.back().empty())
        lines.pop_back();
    return lines;
}

/// The name that a line may give an entry, of whatever group.
wxString name_in(const wxString& line) {
    wxString name = line.BeforeFirst('=');
    name.Replace("\\", "");
    while (!name.empty() && wxIsspace(name[0]))
        name.erase(0, 1);
    return name.Trim();
}

/// All lines that cannot be entries of the program.
std::vector<wxString> lines_of_others(const std::string& bytes) {
    std::vector<wxString> lines = lines_of(decoded(bytes));
    std::erase_if(lines, [](const wxString& line) { return is_key(name_in(line)); });
    return lines;
}

bool has_locked_entry(const std::string& bytes) {
    const std::vector<wxString> lines = lines_of(decoded(bytes));
    return std::any_of(lines.begin(), lines.end(),
                       [](const wxString& line) { return name_in(line).StartsWith("!"); });
}

bool is_odd(wxUniChar c) {
    const auto code = c.GetValue();
    return code < '\t' || (code > '\r' && code < ' ') || code > 0x10FFFF;
}

/// A file of ordinary characters is read, one with a NUL is renamed unchanged.
void require_right_to_put_aside(const std::string& bytes, const std::string& aside) {
    const wxString text = decoded(bytes);
    if (fs::exists(aside)) {
        REQUIRE(content_of(aside) == bytes);
        REQUIRE(text.empty() || std::any_of(text.begin(), text.end(), is_odd));
    } else {
        REQUIRE(text.find(wxUniChar(0)) == wxString::npos);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static const bool logging =
        (delete wxLog::SetActiveTarget(new UnseenLog), wxLog::EnableLogging(true));
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    static const std::string path = settings_file();
    static const std::string aside = path + ".bad";
    fs::remove(aside);  // of an earlier process of this number
    std::ofstream(path, std::ios::binary) << bytes;
    const wxString value = awkward_value(bytes);
    const Entries plain = plain_entries(path);
    Entries others;
    bool read = false;
    bool locked = false;
    {
        const auto config = open_settings(path);
        require_right_to_put_aside(bytes, aside);
        // A second mark of the byte order is lost when the file is written.
        read = !fs::exists(aside) && !decoded(bytes).StartsWith(wxUniChar(0xFEFF));
        REQUIRE(!read || entries_of(*config) == plain);
        others = entries_of_others(*config);
        for (const char* key : kKeys)
            REQUIRE(!read_setting(*config, key, "English").empty());
        locked = read && has_locked_entry(bytes);
        for (const char* key : kKeys) {
            write_setting(*config, key, value);
            REQUIRE(locked || read_setting(*config, key, "English") == value);
        }
        REQUIRE(!read || lines_of_others(content_of(path)) == lines_of_others(bytes));
    }
    const auto config = open_settings(path);
    REQUIRE(!read || entries_of_others(*config) == others);
    for (const char* key : kKeys)
        REQUIRE(locked || read_setting(*config, key, "English") == value);
    REQUIRE(read_setting(*config, "Shutdown", "English") == "false");
    fs::remove(path);
    fs::remove(aside);
    return 0;
}
