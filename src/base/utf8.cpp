#include "base/utf8.h"

#include <cstddef>

namespace {

/// Bytes that `c` takes in UTF-8; 0 for a surrogate or a number beyond the last character.
std::size_t length_in_utf8(wxUniChar c) {
    const auto code = c.GetValue();
    if ((code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF)
        return 0;
    return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

}  // namespace

wxString text_from_utf8(std::string_view bytes) {
    // The toolkit lets overlong forms, surrogates and numbers that are no characters pass, and then
    // fails an assertion when it meets them in its own strings.
    const wxString text = wxString::FromUTF8(bytes.data(), bytes.size());
    std::size_t length = 0;
    for (const wxUniChar c : text) {
        const std::size_t bytesOfOne = length_in_utf8(c);
        if (bytesOfOne == 0)
            return wxEmptyString;
        length += bytesOfOne;
    }
    return length == bytes.size() ? text : wxString();
}
