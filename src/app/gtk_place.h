#pragma once

class wxFrame;
class wxSize;

/// Keeps the frame at `size` pixels, its title bar included and shadows excluded, and centres it
/// where the display lets a program choose. Where the display server draws the title bar without
/// announcing its height (most Wayland compositors that do so), `size` is that of the rest.
///
/// Call once, before the frame is shown: what surrounds a window is known only when it appears. The
/// frame may be destroyed at any time.
void keep_size_and_place(wxFrame& frame, const wxSize& size);
