#pragma once

/// Gives the window's texts a font and a resolution of their own, at which all of them fit, and
/// keeps both when the desktop's settings change. Message boxes, file dialogs and the title bar
/// follow the desktop's font and text size. Call once, after the toolkit is initialised and before
/// the first control is made.
void fix_text_size();
