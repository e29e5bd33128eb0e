#pragma once

#include <string>

#include "core/result.h"
#include "output/note_place.h"
#include "output/note_text.h"

namespace bundle {

/// The note about a step that failed, with the advice for its cause. `untouched` says what is
/// unchanged.
FailureNote failure_note(Step step, const Failure& failure, const std::string& untouched);

/// Leaves the note and has the desktop show its headline. When the note is not beside the output,
/// the console says where it is, or that there is none.
void report_failure(const Subject& subject, Step step, const FailureNote& note);

}  // namespace bundle
