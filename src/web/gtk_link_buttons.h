#pragma once

class wxHtmlWindow;

/// Makes the links of the box accessible to the keyboard and to screen readers: over each link is a
/// GTK button that draws only a mark around the link that has the focus, and lets the pointer
/// through. Pressing it clicks the link. The buttons follow the page of the box when it is set or
/// laid out again; the focus stays on the link at the same position.
///
/// Tab skips the box itself. Call once for a box.
void reach_links_by_keyboard(wxHtmlWindow& box);
