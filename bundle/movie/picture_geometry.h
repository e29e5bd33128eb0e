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

/// How much wider than high a stored pixel is shown; 1 when unknown or beyond any movie's.
double pixel_aspect(const std::optional<Rational>& aspect);

/// True for a rotation, in degrees, that exchanges the sides.
bool is_quarter_turn(double rotation);

/// The size of a picture as a player shows it: in square pixels and upright. `aspect` is that of a
/// stored pixel, empty when unknown; `rotation` is in degrees, and only quarter turns exchange the
/// sides, as the system's ffmpeg turns movies.
Size shown_size(Size stored, const std::optional<Rational>& aspect, double rotation);

/// The size that 4:2:0 can hold: even sides, two at least, that are not above the given ones else.
Size even(Size size);

}  // namespace bundle
