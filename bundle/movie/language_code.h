#pragma once

#include <string>
#include <string_view>

namespace bundle {

/// The language as MP4 files name it, in three letters of ISO 639-2/T: of "ger", "deu", "de" and
/// "de-AT" alike "deu". The first one of a list, as teletext has; "und" for what is none.
std::string mp4_language(std::string_view language);

}  // namespace bundle
