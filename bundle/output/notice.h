#pragma once

#include <string>

#include "output/note_text.h"

namespace bundle {

/// What a person is to see of a step that did not go well.
struct Notice {
    std::string output;    ///< path of the MP4 file: the steps of one output are one notice
    std::string name;      ///< the movie's, without its folder
    std::string sentence;  ///< what happened
    std::string trace;     ///< path of the trace; empty: there is none
};

/// Has the desktop show a notification, by a helper program beside this tool which goes its own way
/// and outlives the tool by some seconds. Does nothing where the helper or the session's message
/// bus is missing; does not wait for either.
void show_notice(const Notice& notice, Step step);

}  // namespace bundle
