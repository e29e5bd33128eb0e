#include "movie/audible_streams.h"

#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "core/json_reading.h"
#include "process/ffprobe.h"

namespace bundle {

namespace {

using nlohmann::json;

// Sound of which so many packets give nothing is damaged or enciphered. The first sample clears
// most movies; the second is ten seconds of them, for a movie may begin with damage.
constexpr std::array kSoundSamples{40, 400};
constexpr int kFewestPackets = 8;

/// What one audio stream's packets gave.
struct Decoding {
    int packets = 0;  ///< without those that lie before the start of the movie and give nothing
    int frames = 0;
};

bool is_packet(const json& entry) {
    return text(entry, "type") == "packet";
}

bool is_discarded(const json& packet) {
    return text(packet, "flags").find('D') != std::string::npos;
}

/// The audio streams of which the first `packets` in all give nothing.
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

/// The audio streams that cannot be decoded though there is a decoder.
std::set<int> silent_streams(const std::string& path, const InputOptions& options, int count,
                             const StopSignals& stop) {
    std::set<int> silent;
    for (const int sample : kSoundSamples) {
        silent = silent_at_first(path, options, sample * count, stop);
        if (silent.empty()) {
            break;
        }
    }
    return silent;
}

int count_sounds(const json& probed) {
    int count = 0;
    for (const json& stream : member(probed, "streams")) {
        count += text(stream, "codec_type") == "audio" ? 1 : 0;
    }
    return count;
}

}  // namespace

Listening::Listening(std::string path, const json& probed, const StopSignals& stop)
    : path_(std::move(path)),
      options_(input_options(probed)),
      sounds_(count_sounds(probed)),
      stop_(stop) {}

void Listening::listen() {
    if (sounds_ > 0) {
        silent_ = silent_streams(path_, options_, std::exchange(sounds_, 0), stop_);
    }
}

void Listening::take_for_silent(const Movie& movie) {
    if (movie.audio) {
        silent_.insert(movie.audio->index);
    }
}

bool Listening::found_silent(const Movie& movie) const {
    return movie.audio && silent_.contains(movie.audio->index);
}

}  // namespace bundle
