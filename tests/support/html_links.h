#pragma once

#include <wx/colour.h>
#include <wx/string.h>

#include <vector>

class wxHtmlWindow;

using Links = std::vector<wxString>;

/// Targets of the links in a box, each once, in order.
Links links_of(const wxHtmlWindow* box);

/// The background colour that the page sets.
wxColour page_colour(const wxHtmlWindow* box);

/// The text colours of the page, in order.
std::vector<wxColour> text_colours(const wxHtmlWindow* box);
