#pragma once

/// Fits the GTK theme to the window's fixed geometry: one application-wide style sheet and text
/// resolution. Call once, after the toolkit is initialised and before the first control is made.
void apply_gtk_look();

class wxFrame;
class wxSize;

/// Sizes and centres the frame once more when it first appears: only then does the toolkit know the
/// window manager's borders, and some window managers choose the first place themselves.
void keep_place_when_mapped(wxFrame& frame, const wxSize& size);
