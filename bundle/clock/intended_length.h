#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "clock/file_pieces.h"

namespace bundle {

/// What the header of a truncated AVI or ASF (WMV) file of `size` bytes says about the whole movie,
/// in seconds, and what all headers of joined ASF files say about theirs together. Empty for any
/// other file, and where the file is as large as its header says.
///
/// AVI: the sizes of the RIFF chunk and the length of the video stream ("strh"). ASF: see
/// `asf_parts`.
std::optional<double> length_in_header(std::int64_t size, const ReadBytes& read);

/// True for a file, by its beginning, whose header gives the length of the movie whatever the size
/// of the file: MP4, QuickTime, AVI, ASF (WMV), MXF, and Matroska with a duration. Zeros at its end
/// are no sign that it was truncated: they may be padding, or a raw picture that is black.
bool has_own_length(std::string_view head);

/// Where the zeros at the end of a file begin, to the nearest 16 KiB; the file's size when there
/// are none. A download that has reserved the room for all of a movie ends in zeros.
std::int64_t content_end(const std::string& path);

/// How long the movie in the file was before it was truncated, as far as that can be found out, in
/// seconds; 0 when nothing shows that it was. `readable` is how many seconds can be read: with
/// zeros at the end of a file without a length of its own, the rest is taken to be as long for its
/// size.
double intended_length(const std::string& path, double readable);

}  // namespace bundle
