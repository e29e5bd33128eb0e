#pragma once

#include <string>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// Refuses a source that can't be a movie: missing, a folder, pipe or device, empty, not readable,
/// or on a drive that does not answer within `kLongestStall`. The failure names it.
///
/// Another process touches the file first: a read from a dead network drive can't be interrupted,
/// and a thread that hangs in one would keep this process from ending.
MaybeFailure check_source(const std::string& path, const StopSignals& stop);

}  // namespace bundle
