#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "clock/even_clock.h"
#include "clock/stream_clock.h"
#include "core/byte_sink.h"

namespace bundle {

/// What an FLV file begins with.
inline constexpr std::string_view kFlv = "FLV\x01";

/// The first time of a picture in a piece of an FLV file; its place is in the piece. Adobe Flash
/// Video File Format Specification 10.1, E.4.
std::optional<ClockPoint> first_flv_time(std::string_view piece);

/// Hands on an open FLV file with the clock's jumps taken out, as one movie: without the headers
/// and scripts of parts that were joined to it.
void hand_on_flv(int file, EvenClock& clock, const ByteSink& sink);

}  // namespace bundle
