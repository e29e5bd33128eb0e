#pragma once

class wxHtmlWindow;

/// Lets the keyboard and screen readers reach the links of the box: puts a button of the toolkit
/// over each link, which draws nothing but a mark around the link while that has the focus, and
/// lets the pointer through. Pressing it is a click on the link. Follows the page of the box
/// whenever that is set or laid out again; the focus stays on the link of the same place.
///
/// The box itself is left out when Tab goes through the window. Call once for a box.
void reach_links_by_keyboard(wxHtmlWindow& box);
