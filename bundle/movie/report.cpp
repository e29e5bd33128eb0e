#include "movie/report.h"

#include <algorithm>
#include <cmath>

#include "core/formatted.h"

#include "protocol/tool_output.h"

namespace bundle {

namespace {

// 99:59:59.99 in hundredths of a second.
constexpr double kLongest = 100.0 * 3600 * 100 - 1;

std::string clock(const std::optional<double>& seconds) {
    if (!seconds || *seconds < 0) {
        return "N/A";
    }
    const long hundredths = std::lround(std::min(std::floor(*seconds * 100 + 1e-6), kLongest));
    const long whole = hundredths / 100;
    return formatted("%02ld:%02ld:%02ld.%02ld", whole / 3600, whole / 60 % 60, whole % 60,
                     hundredths % 100);
}

std::string rate(double frames_per_second) {
    return two_decimals(frames_per_second > 0 ? frames_per_second : 0);
}

/// Ticks per second; whole thousands have a k.
std::string ticks(const std::optional<Rational>& time_base) {
    const double ticks = time_base ? 1 / time_base->value() : 0;
    const bool thousands = ticks >= 1000 && std::fmod(ticks, 1000) == 0;
    return thousands ? two_decimals(ticks / 1000) + "k" : rate(ticks);
}

std::string video_line(const VideoStream& video) {
    const std::string average = rate(frame_rate(video));
    const std::string base = rate(video.base_rate ? video.base_rate->value() : 0);
    return formatted(tool_output::kVideoLine, video.index, video.codec.c_str(),
                     video.pixel_format.c_str(), video.shown.width, video.shown.height,
                     average.c_str(), base.c_str(), ticks(video.time_base).c_str(),
                     average.c_str());
}

std::string channels(int count) {
    if (count == 1 || count == 2) {
        return count == 1 ? "mono" : "stereo";
    }
    return std::to_string(count) + " channels";
}

std::string audio_line(const AudioStream& audio) {
    return formatted(tool_output::kAudioLine, audio.index, audio.codec.c_str(), audio.sample_rate,
                     channels(audio.channels).c_str());
}

}  // namespace

std::string movie_report(const Movie& movie) {
    const std::string bit_rate =
        movie.bit_rate ? std::to_string(*movie.bit_rate / 1000) + " kb/s" : "N/A";
    std::string report = formatted(tool_output::kDurationLine, clock(movie.duration).c_str(),
                                   movie.start, bit_rate.c_str());
    report += video_line(movie.video);
    if (movie.audio) {
        report += audio_line(*movie.audio);
    }
    return report;
}

}  // namespace bundle
