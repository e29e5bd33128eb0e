#include "movie/colour.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace bundle {

namespace {

const Colour kBt709{"tv", "bt709", "bt709", "bt709"};
const Colour kBt601Pal{"tv", "bt470bg", "bt470bg", "smpte170m"};
const Colour kBt601Ntsc{"tv", "smpte170m", "smpte170m", "smpte170m"};
const Colour kBt2020{"tv", "bt2020nc", "bt2020", "bt709"};

template <typename Names>
bool is_one_of(std::string_view name, const Names& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool is_rgb(const std::string& pixel_format) {
    constexpr std::array<std::string_view, 10> kStarts{"rgb",  "bgr",  "gbr",  "argb",  "abgr",
                                                       "0rgb", "0bgr", "pal8", "x2rgb", "x2bgr"};
    return std::any_of(kStarts.begin(), kStarts.end(),
                       [&](std::string_view start) { return pixel_format.starts_with(start); });
}

bool is_high_definition(Size size) {
    return size.width >= 1280 || size.height >= 720;
}

bool is_wide(const Colour& colour) {
    return is_high_dynamic_range(colour) || colour.primaries == "bt2020";
}

const Colour& usual_colour(const Colour& stated, bool rgb, Size size) {
    if (is_wide(stated)) {
        return kBt2020;
    }
    if (rgb || is_high_definition(size)) {
        return kBt709;
    }
    return size.height == 576 || size.height == 288 ? kBt601Pal : kBt601Ntsc;
}

void fill(std::string& value, const std::string& usual) {
    if (value.empty()) {
        value = usual;
    }
}

std::string sides(Size size, const char* between) {
    return std::to_string(size.width) + between + std::to_string(size.height);
}

bool is_known_matrix(const Colour& colour) {
    constexpr std::array<std::string_view, 9> kKnown{"bt709",     "bt470bg", "smpte170m",
                                                     "smpte240m", "fcc",     "ycgco",
                                                     "bt2020nc",  "gbr",     "chroma-derived-nc"};
    constexpr std::array<std::string_view, 4> kConstantLuminance{"bt709", "smpte170m", "bt2020-10",
                                                                 "bt2020-12"};
    if (colour.matrix == "bt2020c") {
        return is_one_of(colour.transfer, kConstantLuminance);
    }
    return colour.matrix == "ictcp" ? is_high_dynamic_range(colour)
                                    : is_one_of(colour.matrix, kKnown);
}

/// The colour, with the usual name instead of each name that zscale cannot convert from.
Colour convertible(const Colour& colour) {
    constexpr std::array<std::string_view, 2> kUnknownTransfers{"bt1361e", "smpte428"};
    const Colour& usual = is_wide(colour) ? kBt2020 : kBt709;
    Colour known = colour;
    if (!is_known_matrix(colour)) {
        known.matrix = usual.matrix;
    }
    if (colour.primaries == "smpte428") {
        known.primaries = usual.primaries;
    }
    if (is_one_of(colour.transfer, kUnknownTransfers)) {
        known.transfer = usual.transfer;
    }
    return known;
}

// White is 100 cd/m2 in SDR; the curve keeps darker tones and compresses brighter ones.
const char* const kToneMapping =
    "zscale=t=linear:npl=100,format=gbrpf32le,zscale=p=bt709,tonemap=mobius:desat=0,"
    "zscale=t=bt709:m=bt709:r=tv";

/// Tags the input with setparams; zscale's own input options do not apply to unspecified colours.
std::string conversion(const Colour& colour) {
    const std::string planes = colour.matrix == "gbr" ? "format=gbrp16le," : "";
    return planes + setparams(convertible(colour)) + "," +
           (is_high_dynamic_range(colour) ? kToneMapping : "zscale=m=bt709:p=bt709:t=bt709:r=tv");
}

}  // namespace

std::string setparams(const Colour& colour) {
    return "setparams=range=" + colour.range + ":color_primaries=" + colour.primaries +
           ":color_trc=" + colour.transfer + ":colorspace=" + colour.matrix;
}

bool is_high_dynamic_range(const Colour& colour) {
    return colour.transfer == "smpte2084" || colour.transfer == "arib-std-b67";
}

bool needs_colour_conversion(const Colour& colour) {
    constexpr std::array<std::string_view, 5> kOrdinary{"", "bt709", "bt470bg", "smpte170m", "gbr"};
    // H.264 as x264 writes it has no name for these primaries.
    return is_wide(colour) || colour.primaries == "ebu3213" || !is_one_of(colour.matrix, kOrdinary);
}

Colour assumed_colour(const Colour& stated, const std::string& pixel_format, Size size) {
    Colour colour = stated;
    const bool rgb = is_rgb(pixel_format);
    const bool full = rgb || pixel_format.starts_with("yuvj");
    const Colour& usual = usual_colour(stated, rgb, size);
    if (rgb || stated.matrix == "gbr") {
        colour.matrix = rgb ? "gbr" : "";
    }
    fill(colour.range, full ? "pc" : "tv");
    fill(colour.matrix, usual.matrix);
    fill(colour.primaries, usual.primaries);
    fill(colour.transfer, usual.transfer);
    return colour;
}

ColourPlan colour_plan(const Colour& colour, Size size, bool convert) {
    const std::string scale = "scale=" + sides(size, ":");
    if (convert) {
        return {scale + "," + conversion(colour), kBt709};
    }
    Colour result = colour;
    result.range = "tv";
    std::string filters = scale + ":out_range=tv";
    if (colour.matrix == "gbr") {
        result.matrix = "bt709";
        filters += ":out_color_matrix=bt709";
    }
    return {filters, result};
}

}  // namespace bundle
