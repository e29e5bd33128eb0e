#pragma once

#include <optional>

#include "core/numbers.h"

namespace bundle {

/// A picture's size in pixels.
struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

/// The width of a stored pixel relative to its height; 1 when it is unknown or implausible.
double pixel_aspect(const std::optional<Rational>& aspect);

/// True for a rotation, in degrees, that swaps width and height.
bool is_quarter_turn(double rotation);

/// The size of a picture in a player: upright, in square pixels. `aspect` is that of a stored
/// pixel, empty when unknown; `rotation` is in degrees, and like the system's ffmpeg only quarter
/// turns swap width and height.
Size shown_size(Size stored, const std::optional<Rational>& aspect, double rotation);

/// Both sides rounded down to even, at least 2, as 4:2:0 needs them.
Size even(Size size);

}  // namespace bundle
