#pragma once

#include <optional>
#include <string>

namespace bundle {

/// The content of an MP4 index ("moov") without the chapters that begin after the end of the
/// picture and the sound; the last chapter ends there. A file whose chapters reach further would be
/// as long as they are. Empty when nothing has to be changed, and for an index that is not laid out
/// as ffmpeg does it.
std::optional<std::string> clipped_chapters(const std::string& moov);

/// The same in a finished MP4 file of which the index is the last part. After a failed write, the
/// file is no longer whole.
void clip_chapters(const std::string& path);

}  // namespace bundle
