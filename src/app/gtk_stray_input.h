#pragma once

/// Keeps input that was meant for one window or button from reaching what has taken its place.
/// Covers every window of the program; call once, before the first is shown. Ignored are
///
/// - a click in a dialog within the desktop's double-click time after the dialog was first drawn;
/// - the rest of a double click whose first click was in another of the program's windows;
/// - the rest of a double click on a push button of the main window;
/// - the repeats of a held Enter or Space key, on a button and in another window than the one it
/// was
///   pressed in.
///
/// Further clicks of the same series are ignored with them; nothing else delays or blocks the
/// keyboard. Text fields, lists, check boxes and combo boxes are left alone.
void ignore_stray_input();
