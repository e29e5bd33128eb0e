#include "ffmpeg/picture_gaps.h"

#include "core/formatted.h"
#include "core/lines.h"

namespace bundle {

namespace {

constexpr double kToleratedSeconds = 2;
constexpr double kToleratedShare = 1.0 / 3;

/// True for a message of the audio decoder: "[mp3float @ 0x55] ...", "[aist#0:1/mp3 @ 0x55] ..." or
/// "Error while decoding stream #0:1: ...".
bool is_on_audio(std::string_view line, int index, std::string_view codec) {
    const std::string stream = "#0:" + std::to_string(index);
    return (line.starts_with('[') && line.substr(1).starts_with(codec)) ||
           line.starts_with("[aist#") || line.find("stream " + stream + ":") != line.npos ||
           line.find("Last message repeated") != line.npos;
}

}  // namespace

bool has_other_errors(std::string_view messages, int index, std::string_view codec) {
    while (!messages.empty()) {
        const std::string_view line = take_line(messages);
        if (!line.empty() && !is_on_audio(line, index, codec)) {
            return true;
        }
    }
    return false;
}

std::string picture_gaps(const FrameCount& frames, double rate) {
    const double missing = frames.expected - static_cast<double>(frames.read);
    if (rate <= 0 || missing <= kToleratedSeconds * rate ||
        missing <= frames.expected * kToleratedShare) {
        return {};
    }
    return formatted(
        "The movie is damaged: %.1f of %.1f seconds of its picture (%.0f %%) cannot be "
        "read; the picture stands still there.",
        missing / rate, frames.expected / rate, 100 * missing / frames.expected);
}

}  // namespace bundle
