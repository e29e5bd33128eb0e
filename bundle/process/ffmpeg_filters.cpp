#include "process/ffmpeg_filters.h"

#include <string>

#include "process/run.h"
#include "process/system_tools.h"

namespace bundle {

namespace {

/// What the system's ffmpeg lists; empty when it can't be run.
std::string list_of(const char* option, const StopSignals& stop) {
    const auto program = find_ffmpeg();
    if (!program) {
        return {};
    }
    std::string list;
    const auto collect = [&list](std::string_view piece) { list.append(piece); };
    const auto status = run({*program, {"-v", "quiet", option}}, {collect, {}, {}}, stop);
    return status ? list : "";
}

}  // namespace

bool has_colour_filters(const StopSignals& stop) {
    const std::string list = list_of("-filters", stop);
    return list.find(" zscale ") != std::string::npos &&
           list.find(" tonemap ") != std::string::npos;
}

bool has_teletext_decoder(const StopSignals& stop) {
    return list_of("-decoders", stop).find(" libzvbi_teletextdec ") != std::string::npos;
}

}  // namespace bundle
