#include "film_probe.h"

#include <array>
#include <map>
#include <nlohmann/json.hpp>

#include "console.h"
#include "ffprobe.h"
#include "film_length.h"
#include "json_reading.h"
#include "probe_memory.h"

namespace bundle {

namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

// Enough to meet every stream of a film that is laid out as it plays.
const char* const kSample = "%+#400";

// Sound of which so many packets give nothing is damaged or enciphered. The first sample clears
// most films; the second is ten seconds of them, for a film may begin with damage.
constexpr std::array kSoundSamples{40, 400};
constexpr int kFewestPackets = 8;

// Headers are not exact.
constexpr double kToleratedSeconds = 2;

int stream_count(const json& probed, const char* kind) {
    int count = 0;
    for (const json& stream : member(probed, "streams")) {
        count += text(stream, "codec_type") == kind ? 1 : 0;
    }
    return count;
}

/// What one audio stream's packets gave.
struct Decoding {
    int packets = 0;  ///< without those that lie before the start of the film and give nothing
    int frames = 0;
};

bool is_packet(const json& entry) {
    return text(entry, "type") == "packet";
}

bool is_discarded(const json& packet) {
    return text(packet, "flags").find('D') != std::string::npos;
}

/// The audio streams of which the first `packets` in all give nothing.
std::set<int> silent_at_first(const std::string& path, int packets, const StopSignals& stop) {
    const Words sample{"-select_streams", "a", "-read_intervals", "%+#" + std::to_string(packets)};
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
std::set<int> silent_streams(const std::string& path, int count, const StopSignals& stop) {
    std::set<int> silent;
    for (const int sample : kSoundSamples) {
        silent = silent_at_first(path, sample * count, stop);
        if (silent.empty()) {
            break;
        }
    }
    return silent;
}

/// Looks for a second packet through the whole file, if need be.
Result<bool> is_one_frame(const std::string& path, int index, const StopSignals& stop) {
    const Words first_two{"-select_streams", std::to_string(index), "-read_intervals", "%+#2"};
    const auto answer = probe_entries(path, "packet=stream_index", stop, first_two);
    if (!answer) {
        return answer.failure();
    }
    return member(*answer, "packets").size() < 2;
}

/// The film without the streams that turn out to be one picture.
Result<Film> moving_film(const std::string& path, const json& probed, std::set<int> unusable,
                         const StopSignals& stop) {
    while (true) {
        auto film = film_from(probed, unusable);
        if (!film) {
            return Failure{in_quotes(path) + " is not a movie: " + film.failure().message};
        }
        if (!film->video.may_be_one_frame) {
            return film;
        }
        const auto one_frame = is_one_frame(path, film->video.index, stop);
        if (!one_frame) {
            return one_frame.failure();
        }
        if (!*one_frame) {
            return film;
        }
        unusable.insert(film->video.index);
    }
}

/// The duration by the packets. Where the file ends long before its header says, the header is
/// right: it tells what was there before the file broke off.
std::optional<double> measured_duration(const std::string& path, const Film& film,
                                        const StopSignals& stop) {
    std::set<int> streams{film.video.index};
    if (film.audio) {
        streams.insert(film.audio->index);
    }
    const auto ends = packet_ends(path, streams, stop);
    if (!ends || (film.duration &&
                  (!ends->wanted || ends->any - film.start < *film.duration - kToleratedSeconds))) {
        return film.duration;
    }
    const double duration = ends->wanted.value_or(ends->any) - film.start;
    return duration > 0 ? std::optional(duration) : film.duration;
}

/// The answer without those packets of the sample that tell nothing new: of each stream it matters
/// only whether it has none, one or more.
json in_short(json probed) {
    std::map<int, int> seen;
    json kept = json::array();
    for (const json& packet : member(probed, "packets")) {
        if (++seen[whole(packet, "stream_index")] <= 2) {
            kept.push_back(packet);
        }
    }
    probed["packets"] = std::move(kept);
    return probed;
}

/// What ffprobe tells about the film. A report keeps it for the conversion that usually follows.
Result<json> answer_about(const std::string& path, Sound sound, const StopSignals& stop) {
    if (sound == Sound::kHeard) {
        if (auto kept = recall_probe(path)) {
            return *kept;
        }
    }
    auto probed = probe_entries(path, kFilmEntries, stop, {"-read_intervals", kSample});
    if (probed && sound == Sound::kAsTold) {
        remember_probe(path, in_short(*probed));
    }
    return probed;
}

}  // namespace

Result<Film> probe_film(const std::string& path, Sound sound, const StopSignals& stop) {
    const auto probed = answer_about(path, sound, stop);
    if (!probed) {
        return probed.failure();
    }
    std::set<int> unusable;
    const int count = stream_count(*probed, "audio");
    if (sound == Sound::kHeard && count > 0) {
        unusable = silent_streams(path, count, stop);
    }
    auto film = moving_film(path, *probed, unusable, stop);
    if (film && !film->duration_is_certain) {
        film->duration = measured_duration(path, *film, stop);
    }
    if (stop.received() != 0) {
        return stop.failure();
    }
    return film;
}

}  // namespace bundle
