#include "settings/settings_file.h"

#include <wx/convauto.h>
#include <wx/debug.h>
#include <wx/log.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;

/// Far more than the program ever writes; every change writes the whole file.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 20U;

/// Reads every encoding that wxConvAuto recognises and writes UTF-8. wxConvAuto itself writes the
/// encoding that it has read, without its mark, and Latin-1 lacks letters of some languages.
class SettingsEncoding : public wxConvAuto {
  public:
    size_t FromWChar(char* to, size_t room, const wchar_t* from, size_t length) const override {
        return wxConvUTF8.FromWChar(to, room, from, length);
    }
    size_t GetMBNulLen() const override { return 1; }
    wxMBConv* Clone() const override { return new SettingsEncoding; }
};

fs::path path_of(const wxString& text) {
    const wxScopedCharBuffer bytes = text.fn_str();
    return std::string(bytes.data(), bytes.length());
}

wxString text_of(const fs::path& path) {
    return {path.c_str(), *wxConvFileName};
}

/// The target of `path` if it is a symbolic link, else `path`. The toolkit renames a new file over
/// the old one, which would replace the link.
wxString end_of_links(const wxString& path) {
    std::error_code error;
    fs::path end = path_of(path);
    if (!fs::is_symlink(end, error))
        return path;
    for (int links = 0; links < 40 && fs::is_symlink(end, error); ++links)
        end = end.parent_path() / fs::read_symlink(end, error);
    const fs::path plain = fs::weakly_canonical(end, error);
    return plain.empty() ? path : text_of(plain);
}

/// False for bytes in no known encoding, and for a NUL. What is not Unicode counts as Latin-1,
/// where every byte is a letter, unless it has control characters. The toolkit reads code points
/// above U+10FFFF but cannot write them.
bool is_text(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const wxConvAuto encoding;
    const wxString text(bytes.data(), encoding, bytes.size());
    const bool isUnicode = !encoding.IsUsingFallbackEncoding();
    return text.empty() == bytes.empty() &&
           std::all_of(text.begin(), text.end(), [isUnicode](wxUniChar c) {
               const auto code = c.GetValue();
               const bool isControl = code < '\t' || (code > '\r' && code < ' ');
               return isUnicode ? code != 0 && code <= 0x10FFFF : !isControl;
           });
}

/// Renames `file` to the first free one of the names that end in ".bad", ".bad2", ".bad3", ...
bool put_aside(const fs::path& file) {
    fs::path other = file;
    other += ".bad";
    std::error_code error;
    for (int n = 2; fs::exists(fs::symlink_status(other, error)); ++n)
        other = fs::path(file) += ".bad" + std::to_string(n);
    fs::rename(file, other, error);
    const wxString fault = text_of(file) + " is not text or larger than 1 MiB; ";
    if (error)
        wxLogWarning("%sit cannot be renamed, so changes of the settings are not kept", fault);
    else
        wxLogWarning("%sit is renamed to %s", fault, text_of(other));
    return !error;
}

/// Whether the toolkit can read `path`, if it exists, and write it.
bool is_usable(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::not_found)
        return true;
    if (type != fs::file_type::regular) {
        wxLogWarning("%s is not a file; changes of the settings are not kept", text_of(path));
        return false;
    }
    if (!std::ifstream(path)) {
        wxLogWarning("%s cannot be read; changes of the settings are not kept", text_of(path));
        return false;
    }
    return (fs::file_size(path, error) <= kLargestFile && is_text(path)) || put_aside(path);
}

/// Lines such as "=1" or a group's second header fail assertions of the toolkit, which Debian's
/// build shows in a dialog each. It keeps these lines all the same.
std::unique_ptr<wxFileConfig> read_without_assertions(const wxString& file) {
    const wxAssertHandler_t handler = wxSetAssertHandler(nullptr);
    auto config = std::make_unique<wxFileConfig>("", "", file, "", wxCONFIG_USE_LOCAL_FILE,
                                                 SettingsEncoding());
    wxSetAssertHandler(handler);
    return config;
}

}  // namespace

std::unique_ptr<wxFileConfig> open_settings(const wxString& path) {
    const wxString file = end_of_links(path);
    auto config = is_usable(path_of(file)) ? read_without_assertions(file)
                                           : std::make_unique<wxFileConfig>("", "", "", "", 0);
    config->SetExpandEnvVars(false);  // a "$" in a folder's name is just that
    return config;
}
