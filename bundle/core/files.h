#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/result.h"
#include "core/unique_fd.h"

namespace bundle {

/// True when both paths lead to the same existing file, links followed.
bool same_file(const std::string& one, const std::string& other);

/// True when the path leads to an ordinary file (no folder, pipe or device), links followed.
bool is_regular_file(const std::string& path);

/// True when the path exists, even as a broken link.
bool exists(const std::string& path);

/// Size of the file in bytes, 0 when it is unknown.
std::int64_t file_size(const std::string& path);

/// True when the file was written after the other one; false when either is missing.
bool is_newer(const std::string& path, const std::string& than);

/// The folder of the path's last part: "." for a bare name.
std::string folder_of(const std::string& path);

/// The name in a form that ffmpeg and ffprobe can't take for an option or a protocol.
std::string file_url(const std::string& path);

/// Refuses an input that is missing, not an ordinary file or not readable.
MaybeFailure check_input(const std::string& path);

/// An open file without a name that contains `text`, at its start.
Result<UniqueFd> nameless_file(std::string_view text);

/// The folder for temporary files.
std::string temporary_folder();

}  // namespace bundle
