#include "film_check.h"

#include <array>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>

#include "ffprobe.h"
#include "numbers.h"

namespace bundle {

namespace {

constexpr double kToleratedSeconds = 2;
constexpr double kToleratedShare = 0.02;

Failure incomplete(const char* what) {
    return {std::string("the new film is incomplete: ") + what};
}

}  // namespace

Result<double> check_film(const std::string& path, const Streams& streams,
                          const StopSignals& stop) {
    // The index of a film of our own tells all of that: nothing has to be decoded to find it out.
    const auto probed =
        probe_entries(path, "stream=codec_type:format=duration", stop, {"-nofind_stream_info"});
    if (!probed) {
        return stop.received() != 0 ? probed.failure() : incomplete("it does not open");
    }
    std::map<std::string, int> count;
    for (const auto& stream : probed->value("streams", nlohmann::json::array())) {
        ++count[stream.value("codec_type", "")];
    }
    if (count["video"] == 0) {
        return incomplete("it has no picture");
    }
    if (streams.audio && count["audio"] == 0) {
        return incomplete("it has no sound");
    }
    if (count["subtitle"] < streams.subtitle_tracks) {
        return incomplete("it has no subtitles");
    }
    const auto duration = nlohmann::json::json_pointer("/format/duration");
    return parse_decimal(probed->value(duration, "")).value_or(0);
}

std::string shortfall(double promised, double made) {
    const double missing = promised - made;
    if (missing <= kToleratedSeconds || missing <= promised * kToleratedShare) {
        return {};
    }
    std::array<char, 200> text{};
    std::snprintf(text.data(), text.size(),
                  "The source breaks off: the film holds %.1f of %.1f seconds, %.1f seconds "
                  "(%.0f %%) are missing.",
                  made, promised, missing, 100 * missing / promised);
    return text.data();
}

}  // namespace bundle
