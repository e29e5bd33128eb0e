#include "core/formatted.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace bundle {

std::string formatted(const char* format, ...) {
    std::array<char, 1024> buffer{};
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, values);
    va_end(values);
    return buffer.data();
}

}  // namespace bundle
