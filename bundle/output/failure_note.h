#pragma once

#include <string>

#include "core/result.h"
#include "output/note_place.h"
#include "output/note_text.h"

namespace bundle {

/// A trace that was left.
struct Left {
    std::string path;
    std::string why_not_beside;  ///< the output; empty: it lies there
};

/// Writes the report into the output's trace in place of an earlier one on the same step; what the
/// trace says about the other step stays. It appears in one step, like an output. It goes to the
/// first of `trace_places` that takes it; a file of that name that is not a trace stays. Fails
/// where none takes it, with the reason of the first.
Result<Left> leave_trace(const Subject& subject, Step step, const Report& report);

/// Takes what the traces of the output say about a step, and about those that come after it, out of
/// them; removes a trace when nothing is left. A file of that name that is not a trace stays.
void clear_trace(const Subject& subject, Step from);

/// True when a trace says that the output was not made: what lies there is older.
bool tells_of_no_output(const Subject& subject);

}  // namespace bundle
