#include "support/folder.h"

wxString Folder::file(const wxString& name) const {
    return wxString::FromUTF8(folder / name.utf8_string());
}

wxString Folder::write(const wxString& name, const wxString& content) const {
    return wxString::FromUTF8(folder.write(name.utf8_string(), content.utf8_string()));
}

void Folder::remove(const wxString& name) const {
    std::filesystem::remove(folder / name.utf8_string());
}

wxString file_text(const wxString& path) {
    return wxString::FromUTF8(content_of(path.utf8_string()));
}

void PrintTo(const wxString& text, std::ostream* out) {
    *out << '"' << text.utf8_string() << '"';
}
