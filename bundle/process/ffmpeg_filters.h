#pragma once

#include "core/stop_signals.h"

namespace bundle {

/// True when the system's ffmpeg has the filters that convert colours and map HDR to standard
/// range; Debian's has.
bool has_colour_filters(const StopSignals& stop);

/// True when the system's ffmpeg has a decoder for teletext; Debian's has.
bool has_teletext_decoder(const StopSignals& stop);

}  // namespace bundle
