#include "support/temporary_folder.h"

#include <wx/ffile.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vantreo-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        std::abort();
    folder = wxString::FromUTF8(name.c_str());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder.utf8_string(), ignored);
}

wxString TemporaryFolder::file(const wxString& name) const {
    return folder + "/" + name;
}

wxString TemporaryFolder::write(const wxString& name, const wxString& content) const {
    wxFFile out(file(name), "wb");
    out.Write(content, wxConvUTF8);
    return file(name);
}

wxString file_text(const wxString& path) {
    std::ifstream in(path.utf8_string(), std::ios::binary);
    return wxString::FromUTF8(std::string(std::istreambuf_iterator<char>(in), {}));
}

void PrintTo(const wxString& text, std::ostream* out) {
    *out << '"' << text.utf8_string() << '"';
}
