#pragma once

class wxDialog;
class wxFileDialog;

/// Makes the dialog show every file: GTK takes the toolkit's "*.*" as a pattern, which names
/// without a dot do not match.
void show_every_file(wxFileDialog& dialog);

/// Removes the current folder, the program's own, from the sidebar of a file or folder dialog.
void hide_current_folder(const wxDialog& dialog);
