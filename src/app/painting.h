#pragma once

class wxFrame;

/// Brings what the frame shows onto the screen before the caller blocks. On GTK this takes rounds
/// of an event loop, also while no other runs yet; gives up after a second.
void paint_now(wxFrame& frame);
