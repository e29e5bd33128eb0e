#pragma once

#include <sys/types.h>

/// By this mark a program says that it is about to end its own tools, so that they do not take it
/// for trouble. Shared by the program and its tools: a file of the program's process id in
/// $XDG_RUNTIME_DIR/vantreo, or in a folder of the user's own among the temporary files.
namespace stop_mark {

/// Leaves the mark of this process.
void leave();

/// Removes the mark of this process; does nothing where there is none.
void remove();

/// True while the process has a mark.
bool is_left_by(pid_t process);

}  // namespace stop_mark
