#pragma once

#include <cstddef>
#include <span>

/// A PNG file in the program's memory, which lives as long as the program.
struct PngPicture {
    const unsigned char* bytes;
    std::size_t size;
};

/// The icon in the sizes that a window shows, the smallest first; made by the build.
std::span<const PngPicture> window_icon_pictures();
