#pragma once

#include <string_view>
#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// The cues of an ASS script as ffmpeg writes it, in its order; their texts are marked as those of
/// `StyledText`.
///
/// Keeps bold, italic, underline and colours, from the styles and from the codes in the text. A
/// colour that is too dark for text without an outline becomes white. Leaves out fonts, sizes,
/// positions, movements and drawings, invisible cues and repeated ones. With `has_comments`, for
/// scripts that were written in ASS, text in braces is a comment.
std::vector<Cue> read_ass(std::string_view script, bool has_comments);

}  // namespace bundle
