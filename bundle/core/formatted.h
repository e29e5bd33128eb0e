#pragma once

#include <string>

namespace bundle {

/// What printf would write, of which 1023 bytes are kept.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);

}  // namespace bundle
