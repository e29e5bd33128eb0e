#pragma once

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "core/stop_signals.h"

namespace bundle {

/// Finds out which shape a movie has for most of the time, from some of its frames: lines
/// "SECONDS,WIDTH,HEIGHT,SAMPLE:ASPECT,..." in their order, as ffprobe writes them; anything but
/// the size may be missing. A frame's shape lasts until the next one.
class ShapeTimes {
  public:
    void add(std::string_view line);

    /// "WIDTH,HEIGHT,SAMPLE:ASPECT" of the longest shape, the first of them when there are several;
    /// empty without lines. `end` is where the movie ends, in seconds.
    std::optional<std::string> longest(std::optional<double> end);

  private:
    void last_until(std::optional<double> time);

    std::map<std::string, double, std::less<>> seconds_;
    std::string first_;
    std::string current_;
    std::optional<double> since_;
};

/// True for a movie whose frames may change their shape in the middle, in ffprobe's words of its
/// container and codec: what is broadcast or comes out of a video call.
bool may_change_shape(std::string_view format, std::string_view codec);

/// Gives the movie's stream in ffprobe's JSON the size and the aspect that it has for most of
/// the time, by a look at some pieces of it: the first frames, which ffprobe goes by, may be
/// advertising.
void set_main_shape(nlohmann::json& probed, const std::string& path, const StopSignals& stop);

}  // namespace bundle
