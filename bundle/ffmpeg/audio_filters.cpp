#include "ffmpeg/audio_filters.h"

namespace bundle {

namespace {

// ffmpeg has a usual order for no more.
constexpr int kMostOrderedChannels = 8;

// More than two channels become stereo in the conversion to these layouts, and mono stays mono, of
// which ffmpeg's own way to stereo makes something 3 dB quieter. Speakers that are not there count
// for nothing, so that this also fits a stream that changes its channels on the way. Sums of
// integers would be made quieter as a whole.
const char* const kStereo =
    "aformat=sample_fmts=fltp:channel_layouts=mono|stereo,pan=stereo|FL=FL+FC|FR=FR+FC,";

const char* const kFirstTwo = "pan=stereo|c0=c0|c1=c1,";

// A lost packet, the shortest of usual ones 20 ms long, becomes silence. Clocks that drift apart
// are kept together by playing up to 0.1 % faster or slower, which nobody hears.
const char* const kFillGaps = "aresample=async=50:min_comp=0.01:min_hard_comp=0.015";

// Of sound without gaps, so many samples are so much time.
const char* const kCountTimes = "asetpts=STARTPTS+N/SR/TB,";

// Filling each small step of jittery times would tear the sound all the time.
const char* const kFillLargeGaps = "aresample=async=1";

bool has_unknown_order(const AudioStream& audio) {
    return audio.channels > kMostOrderedChannels && !audio.has_layout;
}

/// A mono stream as a part of ffmpeg's "-filter_complex", whatever speaker it is meant for.
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
                "[left][right]join=inputs=2:channel_layout=stereo:map=0.0-FL|1.0-FR[sound]",
            "-map", "[sound]"};
}

}  // namespace bundle
