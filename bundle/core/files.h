#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/result.h"
#include "core/unique_fd.h"

namespace bundle {

/// True when both paths lead to the same existing file, through whatever links.
bool same_file(const std::string& one, const std::string& other);

/// True when the path leads to an ordinary file (no folder, pipe or device), through links or not.
bool is_regular_file(const std::string& path);

/// True when something lies at the path, a broken link included.
bool exists(const std::string& path);

/// Bytes of the file, 0 when it can't be told.
std::int64_t file_size(const std::string& path);

/// True when the file was written after the other one; false when one of them is missing.
bool is_newer(const std::string& path, const std::string& than);

/// The folder that holds the path's last part: "." for a bare name.
std::string folder_of(const std::string& path);

/// The name as ffmpeg and ffprobe take it without seeing an option or a protocol in it.
std::string file_url(const std::string& path);

/// Refuses an input that can't be a movie or text: missing, no ordinary file, not readable.
MaybeFailure check_input(const std::string& path);

/// A file without a name that holds `text`, to be read from its start.
Result<UniqueFd> nameless_file(std::string_view text);

/// The folder for temporary files.
std::string temporary_folder();

}  // namespace bundle
