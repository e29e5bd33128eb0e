#pragma once

class wxFileDialog;

/// Has the dialog show every file. To GTK the toolkit's "*.*" is a pattern, which names without a
/// dot do not match.
void show_every_file(wxFileDialog& dialog);
