#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// A cue's text in the words of ASS: the markup <i>, <b>, <u> and <font> with a colour, a size or a
/// face becomes override codes, <br> a new line; every other tag, and codes like "{\an8}", are left
/// out. All other characters stay; ones that ASS would take for a code are kept apart by U+2060,
/// which shows nothing.
std::string ass_text(std::string_view text);

/// A whole ASS script, which is how ffmpeg's text encoder takes styles in; times in hundredths of a
/// second.
std::string ass_script(const std::vector<Cue>& cues);

}  // namespace bundle
