#include "movie/decoding_delay.h"

#include <nlohmann/json.hpp>

#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

bool has_decoding_times_only(const std::string& format, const std::string& codec) {
    return (format == "avi" && (codec == "h264" || codec == "hevc")) ||
           (format == "gxf" && codec == "mpeg2video");
}

/// The time of a stream's first packet, in seconds.
std::optional<double> first_time(const json& probed, const json& stream) {
    for (const json& packet : member(probed, "packets")) {
        if (whole(packet, "stream_index") == whole(stream, "index")) {
            return parse_decimal(text(packet, "pts_time"));
        }
    }
    return std::nullopt;
}

}  // namespace

int decoding_delay(const json& probed, const json& video, const json& audio) {
    const std::string format = text(member(probed, "format"), "format_name");
    const auto rate = parse_rational(text(video, "r_frame_rate"));
    if (!rate || !has_decoding_times_only(format, text(video, "codec_name"))) {
        return 0;
    }
    const int frames = whole(video, "has_b_frames");
    const auto start = audio.is_null() ? std::nullopt : first_time(probed, audio);
    return start && *start > (frames - 0.5) / rate->value() ? 0 : frames;
}

std::string undelay_filter(const VideoStream& video) {
    const auto& rate = video.base_rate ? video.base_rate : video.average_rate;
    if (video.decoding_delay <= 0 || !rate) {
        return "";
    }
    // If the first frame is not late, there is no delay.
    return "setpts='PTS-min(STARTPTS,round(" +
           std::to_string(video.decoding_delay * rate->denominator) + "/(" +
           std::to_string(rate->numerator) + "*TB)))',";
}

}  // namespace bundle
