#include "movie/audible_streams.h"

#include <array>
#include <map>
#include <nlohmann/json.hpp>

#include "core/json_reading.h"
#include "movie/input_options.h"
#include "process/ffprobe.h"

namespace bundle {

namespace {

using nlohmann::json;

// Packets per stream. The first sample clears most movies; the second one is some ten seconds long,
// because a movie may begin with damage.
constexpr std::array kSamples{40, 400};
constexpr int kFewestPackets = 8;

/// What was decoded of an audio stream.
struct Decoding {
    int packets = 0;  ///< without those before the start of the movie, which ffmpeg discards
    int frames = 0;
};

bool is_packet(const json& entry) {
    return text(entry, "type") == "packet";
}

bool is_discarded(const json& packet) {
    return text(packet, "flags").find('D') != std::string::npos;
}

/// The audio streams that give nothing within the first `packets` of all audio streams together.
std::set<int> silent_at_first(const std::string& path, InputOptions sample, int packets,
                              const StopSignals& stop) {
    sample.insert(sample.end(),
                  {"-select_streams", "a", "-read_intervals", "%+#" + std::to_string(packets)});
    const auto answer =
        probe_entries(path, "packet=stream_index,flags:frame=stream_index", stop, sample);
    std::map<int, Decoding> streams;
    if (answer) {
        for (const json& entry : member(*answer, "packets_and_frames")) {
            if (!is_packet(entry) || !is_discarded(entry)) {
                Decoding& stream = streams[whole(entry, "stream_index")];
                ++(is_packet(entry) ? stream.packets : stream.frames);
            }
        }
    }
    std::set<int> silent;
    for (const auto& [index, decoding] : streams) {
        if (decoding.packets >= kFewestPackets && decoding.frames == 0) {
            silent.insert(index);
        }
    }
    return silent;
}

int count_audio_streams(const json& probed) {
    int count = 0;
    for (const json& stream : member(probed, "streams")) {
        count += text(stream, "codec_type") == "audio" ? 1 : 0;
    }
    return count;
}

}  // namespace

std::set<int> silent_streams(const std::string& path, const json& probed, const StopSignals& stop) {
    const int count = count_audio_streams(probed);
    std::set<int> silent;
    for (const int sample : kSamples) {
        silent = silent_at_first(path, input_options(probed), sample * count, stop);
        if (silent.empty()) {
            break;
        }
    }
    return silent;
}

}  // namespace bundle
