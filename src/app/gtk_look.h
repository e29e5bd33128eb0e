#pragma once

class wxFrame;

/// Fits the GTK theme and the size of texts to the window's fixed geometry. Call once, after the
/// toolkit is initialised and before the first control is made.
void apply_gtk_look();

/// Makes the frame's contents fit the places that the geometry gives them. Dialogs and the title
/// bar keep the theme's own look.
void fit_theme_to_places(wxFrame& frame);
