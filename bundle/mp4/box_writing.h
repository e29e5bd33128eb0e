#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bundle {

/// A whole number in so many bytes, most significant first.
std::string number(std::uint64_t value, int width);

/// A box of an MP4 file (ISO/IEC 14496-12, 4.2) of less than 4 GiB.
std::string box(std::string_view type, std::string_view content);

/// A box that begins with a version, 0 here, and flags.
std::string full_box(std::string_view type, std::uint64_t flags, std::string_view content);

}  // namespace bundle
