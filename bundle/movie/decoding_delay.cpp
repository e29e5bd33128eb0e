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

/// When the first packet of a stream comes, in seconds.
std::optional<double> first_time(const json& probed, const json& stream) {
    for (const json& packet : member(probed, "packets")) {
        if (whole(packet, "stream_index") == whole(stream, "index")) {
            return parse_decimal(text(packet, "pts_time"));
        }
    }
    return std::nullopt;
}

}  // namespace

int decoding_delay(const json& probed, const json& picture, const json& sound) {
    const std::string format = text(member(probed, "format"), "format_name");
    const auto rate = parse_rational(text(picture, "r_frame_rate"));
    if (!rate || !has_decoding_times_only(format, text(picture, "codec_name"))) {
        return 0;
    }
    const int frames = whole(picture, "has_b_frames");
    const auto start = sound.is_null() ? std::nullopt : first_time(probed, sound);
    return start && *start > (frames - 0.5) / rate->value() ? 0 : frames;
}

std::string undelay_filter(const VideoStream& video) {
    const auto& rate = video.base_rate ? video.base_rate : video.average_rate;
    if (video.decoding_delay <= 0 || !rate) {
        return "";
    }
    // A first frame that isn't late shows that there is no delay.
    return "setpts='PTS-min(STARTPTS,round(" +
           std::to_string(video.decoding_delay * rate->denominator) + "/(" +
           std::to_string(rate->numerator) + "*TB)))',";
}

}  // namespace bundle
