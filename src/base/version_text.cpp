#include "base/version_text.h"

#include <array>
#include <charconv>

#include "base/build_facts.h"

wxString version_text() {
    // The toolkit's locale-free text of a number has a comma where only the C library's locale is
    // set, as GTK does it.
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), VERSION, std::chars_format::fixed, 2);
    return {text.data(), end.ptr};
}
