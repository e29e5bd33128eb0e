#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/stop_signals.h"
#include "process/pipe_feed.h"

namespace bundle {

/// How far the packets of a movie reach, in seconds by its own clock.
struct PacketEnds {
    double any = 0;                ///< of all streams
    std::optional<double> wanted;  ///< of the wanted streams; empty: none seen near the movie's end
};

/// Where the last packets of a movie end, for a file whose header does not say: browser recordings,
/// cut or truncated streams, movies that share their file with something longer. `wanted` are the
/// numbers of streams, `options` what ffprobe needs to see these streams. Empty when it cannot be
/// found.
///
/// Only the first and the last megabytes are read, as one short movie, so that a large file takes
/// no longer; in Matroska both are cut where a cluster (the unit that has times) begins.
std::optional<PacketEnds> packet_ends(const std::string& path, const std::set<int>& wanted,
                                      const std::vector<std::string>& options,
                                      const StopSignals& stop);

/// Where the last packet of a part of a file ends, by the clock of that part, which is a movie of
/// its own; all of it is read.
std::optional<double> end_of_part(int file, const ByteRange& part, const StopSignals& stop);

}  // namespace bundle
