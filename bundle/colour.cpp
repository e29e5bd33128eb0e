#include "colour.h"

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

const Colour& usual_colour(const Colour& told, Size size) {
    if (is_high_dynamic_range(told) || told.primaries == "bt2020") {
        return kBt2020;
    }
    if (is_high_definition(size)) {
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

/// Names the colours that come in, so that zscale never has to guess.
std::string zscale_from(const Colour& colour) {
    return "zscale=rin=" + colour.range + ":min=" + colour.matrix + ":pin=" + colour.primaries +
           ":tin=" + colour.transfer;
}

// 100 cd/m2 is the white of ordinary films; the curve leaves darker tones alone and rolls off the
// rest.
std::string tone_mapping(const Colour& colour) {
    return zscale_from(colour) +
           ":t=linear:npl=100,format=gbrpf32le,zscale=p=bt709,tonemap=mobius:desat=0,"
           "zscale=t=bt709:m=bt709:r=tv";
}

}  // namespace

bool is_high_dynamic_range(const Colour& colour) {
    return colour.transfer == "smpte2084" || colour.transfer == "arib-std-b67";
}

bool needs_colour_conversion(const Colour& colour) {
    constexpr std::array<std::string_view, 5> kOrdinary{"", "bt709", "bt470bg", "smpte170m", "gbr"};
    return is_high_dynamic_range(colour) || colour.primaries == "bt2020" ||
           !is_one_of(colour.matrix, kOrdinary);
}

Colour assumed_colour(const Colour& told, const std::string& pixel_format, Size size) {
    Colour colour = told;
    const bool rgb = is_rgb(pixel_format) || told.matrix == "gbr";
    const bool full = rgb || pixel_format.starts_with("yuvj");
    const Colour& usual = rgb ? kBt709 : usual_colour(told, size);
    if (rgb) {
        colour.matrix = "gbr";
    }
    fill(colour.range, full ? "pc" : "tv");
    fill(colour.matrix, usual.matrix);
    fill(colour.primaries, usual.primaries);
    fill(colour.transfer, usual.transfer);
    return colour;
}

ColourPlan colour_plan(const Colour& colour, Size size, bool has_zscale) {
    const std::string scale = "scale=" + sides(size, ":");
    if (has_zscale && needs_colour_conversion(colour)) {
        const std::string conversion = is_high_dynamic_range(colour)
                                           ? tone_mapping(colour)
                                           : zscale_from(colour) + ":m=bt709:p=bt709:t=bt709:r=tv";
        return {scale + "," + conversion, kBt709};
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
