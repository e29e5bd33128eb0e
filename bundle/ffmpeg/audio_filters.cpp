#include "ffmpeg/audio_filters.h"

namespace bundle {

namespace {

// ffmpeg has no usual order for more.
constexpr int kMostOrderedChannels = 8;

// aformat mixes three or more channels to stereo and keeps mono, which ffmpeg would make 3 dB
// quieter on its way to stereo. pan then takes missing channels for silence, so that this also
// works for a stream whose channels change. Integer samples would make pan attenuate the sum.
const char* const kStereo =
    "aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,";

const char* const kFirstTwo = "pan=stereo|c0=c0|c1=c1,";

// A lost packet, which is at least 20 ms long, becomes silence. Drifting clocks are compensated by
// playing up to 0.1 % faster or slower, which is inaudible.
const char* const kFillGaps = "aresample=async=50:min_comp=0.01:min_hard_comp=0.015";

// Derives the times from the number of samples; for audio without gaps.
const char* const kCountTimes = "asetpts=STARTPTS+N/SR/TB,";

// Filling every small step of jittery times would be audible all the time.
const char* const kFillLargeGaps = "aresample=async=1";

bool has_unknown_order(const AudioStream& audio) {
    return audio.channels > kMostOrderedChannels && !audio.has_layout;
}

/// The part of "-filter_complex" for one side, whatever speaker the stream is for.
std::string one_side(const std::string& stream, const std::string& name) {
    return "[" + stream + "]pan=mono|c0=c0," + kFillGaps + name + ";";
}

}  // namespace

std::string audio_filters(const AudioStream& audio) {
    return std::string(audio.has_false_times ? kCountTimes : "") +
           (has_unknown_order(audio) ? kFirstTwo : kStereo) +
           (audio.has_jittery_times || audio.has_false_times ? kFillLargeGaps : kFillGaps);
}

std::vector<std::string> audio_source(const AudioStream& audio) {
    const std::string stream = "0:" + std::to_string(audio.index);
    if (!audio.right) {
        return {"-map", stream, "-af", audio_filters(audio)};
    }
    return {"-filter_complex",
            one_side(stream, "[left]") + one_side("0:" + std::to_string(*audio.right), "[right]") +
                "[left][right]join=inputs=2:channel_layout=stereo:map=0.0-FL|1.0-FR[audio]",
            "-map", "[audio]"};
}

}  // namespace bundle
