#include "ffmpeg_filters.h"

#include <string>

#include "process.h"
#include "system_tools.h"

namespace bundle {

bool has_colour_filters(const StopSignals& stop) {
    const auto program = find_ffmpeg();
    if (!program) {
        return false;
    }
    std::string list;
    const auto collect = [&list](std::string_view piece) { list.append(piece); };
    const auto status = run({*program, {"-v", "quiet", "-filters"}}, {collect, {}, {}}, stop);
    return status && list.find(" zscale ") != std::string::npos &&
           list.find(" tonemap ") != std::string::npos;
}

}  // namespace bundle
