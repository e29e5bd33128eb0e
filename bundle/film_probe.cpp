#include "film_probe.h"

#include <map>
#include <nlohmann/json.hpp>

#include "console.h"
#include "ffprobe.h"
#include "film_length.h"
#include "json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

// Enough to meet every stream of a film that is laid out as it plays.
const char* const kSample = "%+#400";

// Sound of which so many packets give nothing is damaged or enciphered.
constexpr int kSoundSample = 40;
constexpr int kFewestPackets = 8;

int stream_count(const json& probed, const char* kind) {
    int count = 0;
    for (const json& stream : member(probed, "streams")) {
        count += text(stream, "codec_type") == kind ? 1 : 0;
    }
    return count;
}

/// What one audio stream's packets gave.
struct Decoding {
    int packets = 0;
    int frames = 0;
};

/// The audio streams that cannot be decoded though there is a decoder.
std::set<int> silent_streams(const std::string& path, int count, const StopSignals& stop) {
    const Words sample{"-select_streams", "a", "-read_intervals",
                       "%+#" + std::to_string(kSoundSample * count)};
    const auto answer = probe_entries(path, "packet=stream_index:frame=stream_index", stop, sample);
    std::map<int, Decoding> streams;
    if (answer) {
        for (const json& entry : member(*answer, "packets_and_frames")) {
            Decoding& stream = streams[whole(entry, "stream_index")];
            ++(text(entry, "type") == "packet" ? stream.packets : stream.frames);
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

/// Looks for a second packet through the whole file, if need be. In doubt there is one.
bool is_one_frame(const std::string& path, int index, const StopSignals& stop) {
    const Words first_two{"-select_streams", std::to_string(index), "-read_intervals", "%+#2"};
    const auto answer = probe_entries(path, "packet=stream_index", stop, first_two);
    return answer && member(*answer, "packets").size() < 2;
}

/// The film without the streams that turn out to be one picture.
Result<Film> moving_film(const std::string& path, const json& probed, std::set<int> unusable,
                         const StopSignals& stop) {
    while (true) {
        auto film = film_from(probed, unusable);
        if (!film) {
            return Failure{in_quotes(path) + " is not a movie: " + film.failure().message};
        }
        if (!film->video.may_be_one_frame || !is_one_frame(path, film->video.index, stop)) {
            return film;
        }
        unusable.insert(film->video.index);
    }
}

}  // namespace

Result<Film> probe_film(const std::string& path, const StopSignals& stop) {
    const auto probed = probe_entries(path, kFilmEntries, stop, {"-read_intervals", kSample});
    if (!probed) {
        return probed.failure();
    }
    std::set<int> unusable;
    if (const int count = stream_count(*probed, "audio")) {
        unusable = silent_streams(path, count, stop);
    }
    auto film = moving_film(path, *probed, unusable, stop);
    if (film && !film->duration) {
        const auto end = end_of_packets(path, stop);
        if (end && *end > film->start) {
            film->duration = *end - film->start;
        }
    }
    if (stop.received() != 0) {
        return stop.failure();
    }
    return film;
}

}  // namespace bundle
