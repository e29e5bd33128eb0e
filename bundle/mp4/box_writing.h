#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bundle {

/// A big-endian number of `width` bytes.
std::string number(std::uint64_t value, int width);

/// A box of an MP4 file (ISO/IEC 14496-12, 4.2) of less than 4 GiB.
std::string box(std::string_view type, std::string_view content);

/// A box that begins with flags and with version 0, which is the highest of their four bytes.
std::string full_box(std::string_view type, std::uint64_t flags, std::string_view content);

}  // namespace bundle
