#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "subtitles/subrip.h"

namespace bundle {

/// A cue's text in ASS. <i>, <b>, <u> and <font> with a colour, a size or a face become override
/// codes, <br> a new line; all other tags, and codes such as "{\an8}", are left out. All other
/// characters stay; an invisible U+2060 separates those that ASS would take for a code.
std::string ass_text(std::string_view text);

/// A complete ASS script, the form in which ffmpeg's text encoder accepts styles. Times have
/// hundredths of a second.
std::string ass_script(const std::vector<Cue>& cues);

}  // namespace bundle
