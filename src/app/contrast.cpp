#include "app/contrast.h"

#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMixSteps = 20;

double linear(unsigned char channel) {
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double relative_luminance(const wxColour& colour) {
    return 0.2126 * linear(colour.Red()) + 0.7152 * linear(colour.Green()) +
           0.0722 * linear(colour.Blue());
}

unsigned char mix(unsigned char from, unsigned char to, double share) {
    return static_cast<unsigned char>(std::lround(from + (to - from) * share));
}

wxColour mix(const wxColour& from, const wxColour& to, double share) {
    return {mix(from.Red(), to.Red(), share), mix(from.Green(), to.Green(), share),
            mix(from.Blue(), to.Blue(), share)};
}

}  // namespace

double contrast(const wxColour& one, const wxColour& other) {
    const auto [darker, lighter] =
        std::minmax({relative_luminance(one), relative_luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

wxColour readable_on(const wxColour& background, const wxColour& wanted, const wxColour& text) {
    for (int step = 0; step < kMixSteps; ++step) {
        const wxColour colour = mix(wanted, text, static_cast<double>(step) / kMixSteps);
        if (contrast(colour, background) >= kReadableContrast)
            return colour;
    }
    return text;
}

wxColour opaque_on(const wxColour& background, const wxColour& colour) {
    return mix(background, colour, colour.Alpha() / double{wxALPHA_OPAQUE});
}

wxColour opaque_page_colour(const wxColour& background) {
    return opaque_on(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW), background);
}
