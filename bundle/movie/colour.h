#pragma once

#include <string>

#include "movie/picture_geometry.h"

namespace bundle {

/// The colour properties of a video, in ffmpeg's names; empty: unspecified.
struct Colour {
    std::string range;      ///< "tv" (limited) or "pc" (full)
    std::string matrix;     ///< "bt709", "smpte170m", "bt470bg", ...
    std::string primaries;  ///< "bt709", "smpte170m", "bt470bg", "bt2020", ...
    std::string transfer;   ///< "bt709", "smpte2084" (PQ), "arib-std-b67" (HLG), ...
    bool operator==(const Colour&) const = default;
};

/// The filter that tags frames with these colours, all of them specified, and does not change them.
std::string setparams(const Colour& colour);

/// True for high dynamic range, which looks flat if it is shown as standard dynamic range.
bool is_high_dynamic_range(const Colour& colour);

/// True for colours that only ffmpeg's zscale filter can convert to those of ordinary movies.
bool needs_colour_conversion(const Colour& colour);

/// The stated colours, with unspecified ones filled in as players do: by the pixel format, and by
/// whether the size is that of high definition. A matrix that contradicts the pixel format is
/// ignored.
Colour assumed_colour(const Colour& stated, const std::string& pixel_format, Size size);

/// The filters that scale a picture and bring its colours into limited range, and those colours.
struct ColourPlan {
    std::string filters;
    Colour result;
};

/// Scales to `size`. With `convert`, which takes ffmpeg's zscale and tonemap filters, the result is
/// BT.709: high dynamic range is tone-mapped, and a name that zscale cannot convert from is
/// replaced by the usual one. Otherwise the colours stay, except that RGB becomes BT.709.
ColourPlan colour_plan(const Colour& colour, Size size, bool convert);

}  // namespace bundle
