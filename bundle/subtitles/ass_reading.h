#pragma once

#include <string_view>
#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// The cues of an ASS script as ffmpeg writes it, in its order; the texts are those of
/// `StyledText`.
///
/// Kept are bold, italic and underlined letters and their colours, from the styles and from the
/// codes in the text; a colour that is too dark for a line without an outline becomes white. Faces,
/// sizes, places, movements and drawings are left out, and so are cues without anything to see and
/// all but one of several that are the same. With `has_comments`, as in scripts that were written
/// in ASS, text in braces is a comment.
std::vector<Cue> read_ass(std::string_view script, bool has_comments);

}  // namespace bundle
