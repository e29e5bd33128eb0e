#pragma once

#include <wx/colour.h>
#include <wx/string.h>

#include <vector>

class wxHtmlWindow;

using Links = std::vector<wxString>;

/// Targets of the links that a box shows, each once, in order.
Links links_of(const wxHtmlWindow* box);

/// The background colour that the shown page asks for.
wxColour page_colour(const wxHtmlWindow* box);

/// The colours that the shown page writes in, in order.
std::vector<wxColour> text_colours(const wxHtmlWindow* box);
