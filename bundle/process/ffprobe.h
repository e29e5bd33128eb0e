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

/// What the system's ffprobe reports about a file, as JSON. `entries` is the value of its
/// `-show_entries`, `more` are further options; packets are those of "-read_intervals" in `more`,
/// else all. A failure names the file and ffprobe's reason, not its messages. Reading more than
/// `most_read` bytes (0: no limit) is a failure with the status `kStatusReadTooMuch`.
Result<nlohmann::json> probe_entries(const std::string& path, const std::string& entries,
                                     const StopSignals& stop,
                                     const std::vector<std::string>& more = {},
                                     std::int64_t most_read = 0);

/// Calls `on_packet` with a line for each packet of the movie on the descriptor `input`: ffprobe's
/// `packet` fields named in `fields`, in ffprobe's order, separated by commas. `more` are further
/// options.
MaybeFailure read_packets(int input, std::vector<std::string> more, const std::string& fields,
                          const StopSignals& stop,
                          const std::function<void(std::string_view)>& on_packet);

/// The same for the key frames of a stream, with `frame` fields.
MaybeFailure read_key_frames(int input, int stream, std::vector<std::string> more,
                             const std::string& fields, const StopSignals& stop,
                             const std::function<void(std::string_view)>& on_frame);

}  // namespace bundle
