#pragma once

#include <string>

#include "core/result.h"
#include "output/note_place.h"
#include "output/note_text.h"

namespace bundle {

/// A failure note that was written.
struct WrittenNote {
    std::string path;
    std::string why_not_beside;  ///< why it is not beside the output; empty: it is
};

/// Writes the note in place of an earlier one about the same step; what it says about the other
/// step stays. It appears in one step, like an output, in the first of `note_places` where it can
/// be written. A file of that name that is not a failure note is kept. Fails where no place can be
/// written to, with the reason of the first.
Result<WrittenNote> leave_note(const Subject& subject, Step step, const FailureNote& note);

/// Removes what the output's notes say about a step and those after it, and notes that say nothing
/// else. A file of that name that is not a failure note is kept.
void clear_note(const Subject& subject, Step from);

/// True when a note says that no MP4 file was made: a file in its place is older.
bool conversion_failed(const Subject& subject);

}  // namespace bundle
