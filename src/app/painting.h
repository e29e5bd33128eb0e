#pragma once

class wxFrame;

/// Brings what the frame shows onto the screen before the caller blocks. On GTK this takes rounds
/// of an event loop, also while no other runs yet: until it has been drawn so often at its size, or
/// a second has passed. A frame of fixed size is expected.
void paint_now(wxFrame& frame, int draws = 1);
