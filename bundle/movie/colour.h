#pragma once

#include <string>

#include "movie/picture_geometry.h"

namespace bundle {

/// How the numbers of a picture stand for colours, in ffmpeg's words; empty means not told.
struct Colour {
    std::string range;      ///< "tv" (limited) or "pc" (full)
    std::string matrix;     ///< of luma and chroma: "bt709", "smpte170m", "bt470bg", ...
    std::string primaries;  ///< "bt709", "smpte170m", "bt470bg", "bt2020", ...
    std::string transfer;   ///< "bt709", "smpte2084" (PQ), "arib-std-b67" (HLG), ...
    bool operator==(const Colour&) const = default;
};

/// The filter that gives frames these colours' names and leaves the pictures alone. All are told.
std::string setparams(const Colour& colour);

/// True for a movie of high dynamic range, which looks flat where it is taken for an ordinary one.
bool is_high_dynamic_range(const Colour& colour);

/// True for colours that only ffmpeg's zscale filter turns into those of ordinary movies.
bool needs_colour_conversion(const Colour& colour);

/// The colours of a movie with the untold ones filled in as players do: by its pixel format, and by
/// whether it is as large as high definition. A matrix that the pixel format contradicts is untold.
Colour assumed_colour(const Colour& told, const std::string& pixel_format, Size size);

/// How a picture gets its size and its colours in limited range: filters, and the colours after
/// them.
struct ColourPlan {
    std::string filters;
    Colour result;
};

/// Scales to `size`. With `convert`, which takes ffmpeg's zscale and tonemap filters, the result is
/// BT.709: high dynamic range is tone-mapped, and a name that zscale cannot convert from is
/// replaced by the usual one. Otherwise the colours stay, except that RGB becomes BT.709.
ColourPlan colour_plan(const Colour& colour, Size size, bool convert);

}  // namespace bundle
