#pragma once

#include <wx/colour.h>

/// The contrast of two opaque colours, from 1 (the same) to 21 (black and white), as the Web
/// Content Accessibility Guidelines 2.1 define it ("contrast ratio").
double contrast(const wxColour& one, const wxColour& other);

/// The least that those guidelines require of a text (level AA).
constexpr double kReadableContrast = 4.5;

/// `wanted`, or as much of it mixed into `text` as stays readable on `background`; `text` itself
/// when nothing does.
wxColour readable_on(const wxColour& background, const wxColour& wanted, const wxColour& text);

/// `colour` as it is seen in front of an opaque `background`.
wxColour opaque_on(const wxColour& background, const wxColour& colour);

/// The visible colour of a background that the toolkit reports for a control: some themes make it
/// translucent, in front of their windows, and HTML has no translucent colours.
wxColour opaque_page_colour(const wxColour& background);
