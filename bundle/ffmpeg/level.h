#pragma once

namespace bundle {

/// The lowest H.264 level, as ten times its number (30 is level 3), that is not below `asked` and
/// allows this picture size in pixels, rate in frames per second and number of reference frames.
/// The limits are those of ITU-T H.264, table A-1, with clause A.3.1's bound on each side. Beyond
/// the highest level's limits it is that level.
int h264_level(int asked, int width, int height, double rate, int reference_frames);

}  // namespace bundle
