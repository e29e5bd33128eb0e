#pragma once

#include <string>
#include <string_view>

#include "result.h"

namespace bundle {

/// The steps that make one output, in their order.
enum class Step { kConversion, kSubtitles };

/// What a trace tells about one step, in plain words.
struct Report {
    std::string happened;       ///< what went wrong, and why
    std::string untouched;      ///< what was left as it was, or what was delivered
    std::string last_lines;     ///< of the tool that did the work; may be empty
    bool is_delivered = false;  ///< the step has put a film in the output's place all the same
};

/// Where the trace of an output lies: its name with ".failed.txt". Of a name that leaves no room
/// for that there is the beginning and a mark of its own.
std::string trace_path(const std::string& output);

/// Writes the report into the output's trace in place of an earlier one on the same step; what the
/// trace tells about the other step stays. It appears in one step, like an output. Fails where it
/// can't be written; a file of that name that is not ours stays.
MaybeFailure leave_trace(const std::string& output, Step step, const Report& report);

/// As above; where no trace can be left, the console says why.
void tell_in_trace(const std::string& output, Step step, const Report& report);

/// Takes what the trace of the output tells about a step, and about those that come after it, out
/// of it; removes the trace when nothing is left. A file of that name that is not ours stays.
void clear_trace(const std::string& output, Step from);

/// True when the trace tells that the output was not made: what lies there is older.
bool tells_of_no_output(const std::string& output);

}  // namespace bundle
