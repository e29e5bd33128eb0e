#include "movie/picture_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace bundle {

namespace {

// No movie has pixels ten times as wide as high; such an aspect is damage.
constexpr double kFlattest = 10;

}  // namespace

double pixel_aspect(const std::optional<Rational>& aspect) {
    const double factor = aspect ? aspect->value() : 1;
    return factor < kFlattest && factor > 1 / kFlattest ? factor : 1;
}

bool is_quarter_turn(double rotation) {
    return std::abs(std::fmod(std::abs(rotation), 180) - 90) < 1;
}

Size shown_size(Size stored, const std::optional<Rational>& aspect, double rotation) {
    Size shown = stored;
    shown.width = static_cast<int>(std::lround(stored.width * pixel_aspect(aspect)));
    if (is_quarter_turn(rotation)) {
        std::swap(shown.width, shown.height);
    }
    return shown;
}

Size even(Size size) {
    return {std::max(2, size.width / 2 * 2), std::max(2, size.height / 2 * 2)};
}

}  // namespace bundle
