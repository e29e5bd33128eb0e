#pragma once

class wxDialog;
class wxFileDialog;

/// Has the dialog show every file. To GTK the toolkit's "*.*" is a pattern, which names without a
/// dot do not match.
void show_every_file(wxFileDialog& dialog);

/// Takes the current folder, the program's own, out of the places at the side of a file or folder
/// dialog.
void hide_current_folder(const wxDialog& dialog);
