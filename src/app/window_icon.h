#pragma once

#include <wx/iconbndl.h>

/// The program's icon in every size that a title bar, a task list or a window switcher shows.
wxIconBundle window_icon();
