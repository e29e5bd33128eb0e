#pragma once

#include <string>

#include "output/note_text.h"

namespace bundle {

/// A notification about a step that failed.
struct Notice {
    std::string output;    ///< path of the MP4 file: the steps of one output share a notification
    std::string name;      ///< the movie's, without its folder
    std::string sentence;  ///< what happened
    std::string note;      ///< path of the failure note; empty: there is none
};

/// Has the desktop show a notification, by a helper program beside this tool that outlives it by
/// some seconds. Does nothing where the helper or the session's message bus is missing; waits for
/// neither.
void show_notice(const Notice& notice, Step step);

}  // namespace bundle
