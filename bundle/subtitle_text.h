#pragma once

#include <string>
#include <string_view>

#include "result.h"

namespace bundle {

/// Reads a subtitle file in SubRip form into UTF-8 without a byte order mark.
///
/// Fails for a file that can't be read, is larger than any subtitle file, is not UTF-8 or holds no
/// cue.
Result<std::string> read_subtitles(const std::string& path);

/// True for well-formed UTF-8 as RFC 3629 defines it, without NUL.
bool is_utf8_text(std::string_view text);

/// The number of lines that time a cue, as "00:00:01,000 --> 00:00:02,500"; lines may end in CR, LF
/// or both.
int count_cues(std::string_view text);

}  // namespace bundle
