#pragma once

#include <optional>
#include <string>

namespace bundle {

/// The content of an MP4 index ("moov") without the chapters that begin after the end of the
/// picture and the sound, where the last chapter then ends. Else the file would be as long as its
/// chapters. Empty when nothing has to change, and for an index that ffmpeg did not write.
std::optional<std::string> clipped_chapters(const std::string& moov);

/// Does that in an MP4 file that ends with its index. A failed write leaves a damaged file.
void clip_chapters(const std::string& path);

}  // namespace bundle
