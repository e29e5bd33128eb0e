#include "mp4/box_writing.h"

namespace bundle {

std::string number(std::uint64_t value, int width) {
    std::string bytes(static_cast<std::size_t>(width), '\0');
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, value >>= 8) {
        *byte = static_cast<char>(value & 0xFF);
    }
    return bytes;
}

std::string box(std::string_view type, std::string_view content) {
    return number(content.size() + 8, 4).append(type).append(content);
}

std::string full_box(std::string_view type, std::uint64_t flags, std::string_view content) {
    return box(type, number(flags, 4).append(content));
}

}  // namespace bundle
