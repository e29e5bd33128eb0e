#pragma once

/// Makes every HTML box use the theme's colours for text and links: by default the toolkit uses
/// black and blue on any background. A link colour that would be hard to read is moved towards the
/// text's. Pages that are set later follow a changed theme. Call once.
void apply_theme_to_html();
