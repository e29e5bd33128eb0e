#pragma once

/// Lets every HTML box write in the theme's colours for texts and links: left alone, the toolkit
/// writes in black and blue, whatever the background. A link's colour is taken closer to the text's
/// where the theme's own would be hard to read. Pages that are set later follow a changed theme.
/// Call once.
void apply_theme_to_html();
