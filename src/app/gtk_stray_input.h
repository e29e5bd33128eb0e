#pragma once

/// Keeps input that was meant for one window or button from reaching one that has replaced it.
/// Covers every window of the program; call once, before the first is shown. Ignored are
///
/// - a click in a dialog within the desktop's double-click time after the dialog was first drawn;
/// - the rest of a double click whose first click was in another of the program's windows;
/// - the rest of a double click on a push button of the main window;
/// - the repeats of an Enter or Space key that is kept pressed, on a button and in any window but
///   the first.
///
/// Further clicks of the same series are ignored with them. The keyboard works at once everywhere.
void ignore_stray_input();
