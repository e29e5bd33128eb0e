#pragma once

#include <optional>
#include <string>

#include "lifetime.h"

namespace bundle {

/// The time in seconds at which the last packet of a film ends, for a file whose header does not
/// tell: browser recordings and cut or broken-off streams. Empty when it can't be found.
///
/// Only the first and the last megabytes are read, as one short film, so that it takes no longer
/// for a large file; in Matroska both are cut where a cluster (the unit that bears times) begins.
std::optional<double> end_of_packets(const std::string& path, const StopSignals& stop);

}  // namespace bundle
