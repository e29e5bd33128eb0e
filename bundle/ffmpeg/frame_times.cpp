#include "ffmpeg/frame_times.h"

#include <algorithm>

namespace bundle {

namespace {

constexpr double kMostFrames = 30;

// ffmpeg moves frames by up to half a frame, which is 25 ms at this rate.
constexpr double kSlow = 20;

constexpr std::int64_t kTicks = 90000;

// A leaky bucket: each frame takes 1/30 s, and one that is little more than a frame early passes,
// so that frames may bunch up a little.
const char* const kLimit =
    "select='if(isnan(t),1,if(isnan(prev_selected_t)+gte(t,ld(0)-0.035),"
    "1+0*st(0,if(isnan(prev_selected_t),t,max(t,ld(0)))+1/30),0))',";

bool is_slow(const VideoStream& video) {
    const double rate = frame_rate(video);
    return rate > 0 && rate < kSlow;
}

/// A whole number of ticks per frame, so that a constant rate stays constant, and fine enough for
/// any start time.
std::int64_t ticks_per_second(const VideoStream& video) {
    if (has_variable_rate(video) || !video.base_rate || video.base_rate->numerator > kTicks) {
        return kTicks;
    }
    const std::int64_t frames = video.base_rate->numerator;
    return (kTicks + frames - 1) / frames * frames;
}

}  // namespace

std::string rate_filter(const TranscodeRequest& request, const VideoStream& video) {
    if (request.rate) {
        // ffmpeg's "-r" would add frames at the end.
        return "fps=" + std::to_string(request.rate->numerator) + "/" +
               std::to_string(request.rate->denominator) + ",";
    }
    return has_variable_rate(video) ? kLimit : "";
}

std::vector<std::string> time_options(const TranscodeRequest& request, const VideoStream& video) {
    if (request.rate || !(has_variable_rate(video) || is_slow(video))) {
        return {};
    }
    // By default ffmpeg repeats and drops frames for a constant rate.
    return {"-fps_mode", "vfr", "-enc_time_base", "1:" + std::to_string(ticks_per_second(video))};
}

double highest_rate(const TranscodeRequest& request, const VideoStream& video) {
    if (request.rate) {
        return request.rate->value();
    }
    return has_variable_rate(video)
               ? std::max(frame_rate(video), std::min(video.base_rate->value(), kMostFrames))
               : frame_rate(video);
}

}  // namespace bundle
