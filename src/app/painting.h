#pragma once

class wxFrame;

/// Paints the frame before the caller blocks. On GTK this runs an event loop, even if no other runs
/// yet, until the frame has been drawn `draws` times at its size, or for a second. The frame must
/// have a fixed size.
void paint_now(wxFrame& frame, int draws = 1);
