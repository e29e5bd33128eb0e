#pragma once

namespace bundle {

/// The lowest H.264 level, times ten (30 is level 3), that is at least `asked` and allows this size
/// in pixels, rate in frames per second and number of reference frames. The limits are those of
/// ITU-T H.264, table A-1, with the bound on each side of clause A.3.1. The highest level, if none
/// allows them.
int h264_level(int asked, int width, int height, double rate, int reference_frames);

}  // namespace bundle
