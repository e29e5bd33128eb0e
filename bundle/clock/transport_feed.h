#pragma once

#include "clock/transport_stream.h"
#include "core/byte_sink.h"

namespace bundle {

/// Hands on an open transport stream in which the numbers (PIDs) of a programme's streams change on
/// the way. Where they do, it adds packets that end the last frames of the former streams: ffmpeg
/// would take them for the last ones of the movie.
void hand_on_transport(int file, const ByteSink& sink);

}  // namespace bundle
