#pragma once

class wxFrame;
class wxSize;

/// Fits the GTK theme and the size of texts to the window's fixed geometry. Call once, after the
/// toolkit is initialised and before the first control is made.
void apply_gtk_look();

/// Lets what the frame contains take the place that the geometry leaves for it. Dialogs and the
/// title bar keep the theme's own look.
void fit_theme_to_places(wxFrame& frame);

/// Sizes and centres the frame once more when it first appears: only then does the toolkit know the
/// window manager's borders, and some window managers choose the first place themselves.
void keep_place_when_mapped(wxFrame& frame, const wxSize& size);
