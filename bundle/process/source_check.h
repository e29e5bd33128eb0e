#pragma once

#include <string>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// Refuses a source that can't be a movie: missing, a folder, pipe or device, empty, not readable,
/// or on a drive that does not answer within `kLongestStall`. Blocks no longer than that, because
/// another process touches the file first. The failure names it.
MaybeFailure check_source(const std::string& path, const StopSignals& stop);

}  // namespace bundle
