#pragma once

#include <array>
#include <cstddef>

/// A device that movies are made for.
struct Device {
    const char* name;     ///< in the list of devices; not translated
    const char* caption;  ///< replaces "iPhone" in the Convert caption
    int longest_side;     ///< of its screen, in pixels
};

/// The devices, by the index in the `Optimize` setting.
inline constexpr auto kDevices = std::to_array<Device>({
    {"iPhone 2g/3g/3gs & iPod touch", "iPhone", 480},
    {"iPhone 4 & iPod touch 4", "iPhone 4", 960},
    {"iPad", "iPad", 1024},
});

/// `index` if it is a device's, else 0: an unknown device counts as the first.
constexpr std::size_t known_device(int index) {
    return index >= 0 && static_cast<std::size_t>(index) < kDevices.size()
               ? static_cast<std::size_t>(index)
               : 0;
}
