#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// What the system's ffprobe tells about a file: `entries`, in the words of its `-show_entries`, as
/// JSON; `more` are further options. Its messages are not repeated, only its reason for a failure:
/// they hold the file's name. Failures name the file. Packets are those of `more`'s
/// "-read_intervals", else all. Reading more than `most_read` bytes (0: no limit) is a failure with
/// the status `kStatusReadTooMuch`.
Result<nlohmann::json> probe_entries(const std::string& path, const std::string& entries,
                                     const StopSignals& stop,
                                     const std::vector<std::string>& more = {},
                                     std::int64_t most_read = 0);

/// Hands `on_packet` a line for each packet of a movie that is read from the descriptor `input`:
/// the values of ffprobe's `packet` fields `fields`, in its order, parted by commas.
MaybeFailure read_packets(int input, const std::string& fields, const StopSignals& stop,
                          const std::function<void(std::string_view)>& on_packet);

/// The same for the frames of a movie: lines of `frame` fields, of whole frames that need no
/// others.
MaybeFailure read_key_frames(int input, int stream, const std::string& fields,
                             const StopSignals& stop,
                             const std::function<void(std::string_view)>& on_frame);

}  // namespace bundle
