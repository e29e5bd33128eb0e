#include "ffmpeg/level.h"

#include <algorithm>
#include <array>

namespace bundle {

namespace {

/// A row of the table; a macroblock is 16 x 16 pixels.
struct Limits {
    int level;
    int macroblocks_per_second;
    int macroblocks_per_frame;
    int macroblocks_stored;
};

constexpr std::array kTable{
    Limits{10, 1485, 99, 396},           Limits{11, 3000, 396, 900},
    Limits{12, 6000, 396, 2376},         Limits{13, 11880, 396, 2376},
    Limits{20, 11880, 396, 2376},        Limits{21, 19800, 792, 4752},
    Limits{22, 20250, 1620, 8100},       Limits{30, 40500, 1620, 8100},
    Limits{31, 108000, 3600, 18000},     Limits{32, 216000, 5120, 20480},
    Limits{40, 245760, 8192, 32768},     Limits{41, 245760, 8192, 32768},
    Limits{42, 522240, 8704, 34816},     Limits{50, 589824, 22080, 110400},
    Limits{51, 983040, 36864, 184320},   Limits{52, 2073600, 36864, 184320},
    Limits{60, 4177920, 139264, 696320}, Limits{61, 8355840, 139264, 696320},
    Limits{62, 16711680, 139264, 696320}};

bool allows(const Limits& limits, int columns, int rows, double rate, int reference_frames) {
    const int frame = columns * rows;
    const int longest_squared = 8 * limits.macroblocks_per_frame;
    return frame <= limits.macroblocks_per_frame && columns * columns <= longest_squared &&
           rows * rows <= longest_squared && frame * rate <= limits.macroblocks_per_second &&
           frame * reference_frames <= limits.macroblocks_stored;
}

}  // namespace

int h264_level(int asked, int width, int height, double rate, int reference_frames) {
    const int columns = (width + 15) / 16;
    const int rows = (height + 15) / 16;
    const auto* found = std::find_if(kTable.begin(), kTable.end(), [&](const Limits& limits) {
        return limits.level >= asked && allows(limits, columns, rows, rate, reference_frames);
    });
    return found == kTable.end() ? kTable.back().level : found->level;
}

}  // namespace bundle
