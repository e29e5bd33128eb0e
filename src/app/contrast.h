#pragma once

#include <wx/colour.h>

/// The contrast of two opaque colours, from 1 (the same) to 21 (black and white), as the Web
/// Content Accessibility Guidelines 2.1 define it ("contrast ratio").
double contrast(const wxColour& one, const wxColour& other);

/// What a text needs at least to be readable by those guidelines (level AA).
constexpr double kReadableContrast = 4.5;

/// `wanted`, or as much of it mixed into `text` as stays readable on `background`; `text` itself
/// when nothing does.
wxColour readable_on(const wxColour& background, const wxColour& wanted, const wxColour& text);

/// `colour` as it is seen in front of an opaque `background`.
wxColour opaque_on(const wxColour& background, const wxColour& colour);

/// What is seen of the background that the toolkit reports for a control, in front of the theme's
/// windows: some themes have a translucent one, and HTML knows no such colours.
wxColour opaque_page_colour(const wxColour& background);
