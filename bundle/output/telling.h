#pragma once

#include <string>

#include "core/result.h"
#include "output/note_place.h"
#include "output/note_text.h"

namespace bundle {

/// The report on a step that failed: what was left, by the caller, and the words for its cause.
Report failed_report(Step step, const Failure& failure, const std::string& untouched);

/// Leaves the report in a trace and has the desktop show its headline. Where the trace does not lie
/// beside the output the console says where it does, or that there is none.
void tell_in_trace(const Subject& subject, Step step, const Report& report);

}  // namespace bundle
