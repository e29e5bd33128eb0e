#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "clock/even_clock.h"
#include "clock/stream_clock.h"
#include "core/byte_sink.h"

namespace bundle {

/// Milliseconds of a tick of a Matroska file that begins with `head` (TimestampScale).
double matroska_tick(std::string_view head);

/// The first time in a piece of a Matroska file, that of a cluster; its place is in the piece.
/// RFC 9559, 5.1.3.
std::optional<ClockPoint> first_matroska_time(std::string_view piece, double tick);

/// Hands on an open Matroska file of `size` bytes with the clock's jumps taken out, as one movie:
/// the heads of the first part, then the clusters of all, without indexes.
void hand_on_matroska(int file, std::int64_t size, EvenClock& clock, const ByteSink& sink);

}  // namespace bundle
