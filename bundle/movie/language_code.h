#pragma once

#include <string>
#include <string_view>

namespace bundle {

/// The language in three letters of ISO 639-2/T, as MP4 files name it: "deu" for "ger", "deu", "de"
/// and "de-AT". Of a list, as teletext has, the first one; "und" for text that is no language.
std::string mp4_language(std::string_view language);

}  // namespace bundle
