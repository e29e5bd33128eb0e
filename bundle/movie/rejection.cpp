#include "movie/rejection.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "core/console.h"
#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

// Sample entries of ISO/IEC 14496-12 and of the iTunes Store.
constexpr std::array<std::string_view, 2> kEncrypted{"encv", "drmi"};

bool is_encrypted_entry(const json& stream) {
    const std::string tag = text(stream, "codec_tag_string");
    return std::find(kEncrypted.begin(), kEncrypted.end(), tag) != kEncrypted.end();
}

/// Common encryption (ISO/IEC 23001-7) shows in the packets only.
bool has_encrypted_packets(const json& probed, int index) {
    const json& packets = member(probed, "packets");
    return std::any_of(packets.begin(), packets.end(), [index](const json& packet) {
        const json& all = member(packet, "side_data_list");
        return whole(packet, "stream_index") == index &&
               std::any_of(all.begin(), all.end(), [](const json& side_data) {
                   return text(side_data, "side_data_type") == "Encryption info";
               });
    });
}

bool is_video(const json& stream) {
    return text(stream, "codec_type") == "video";
}

bool has_decoder(const json& stream) {
    return !text(stream, "codec_name").empty() && !text(stream, "pix_fmt").empty();
}

Failure not_decodable(const json& stream) {
    const std::string codec = text(stream, "codec_name");
    return failure_by(Cause::kNotDecodable,
                      "its picture is in a format that the system's ffmpeg cannot decode" +
                          (codec.empty() ? "" : " (" + printable(codec) + ")"));
}

}  // namespace

Failure no_video(const json& probed) {
    const json& streams = member(probed, "streams");
    const auto video = std::find_if(streams.begin(), streams.end(), is_video);
    if (video == streams.end()) {
        const bool has_audio = std::any_of(streams.begin(), streams.end(), [](const json& stream) {
            return text(stream, "codec_type") == "audio";
        });
        return failure_by(Cause::kNoPicture, has_audio ? "it has sound only, no picture"
                                                       : "it has neither picture nor sound");
    }
    const auto undecodable = std::find_if(streams.begin(), streams.end(), [](const json& stream) {
        return is_video(stream) && !has_decoder(stream);
    });
    return undecodable != streams.end()
               ? not_decodable(*undecodable)
               : failure_by(Cause::kNoPicture, "it has no moving picture, only a still one");
}

bool is_protected(const json& probed) {
    const json& streams = member(probed, "streams");
    return std::any_of(streams.begin(), streams.end(), [&probed](const json& stream) {
        return is_video(stream) && (is_encrypted_entry(stream) ||
                                    has_encrypted_packets(probed, whole(stream, "index")));
    });
}

Failure protected_movie() {
    return failure_by(Cause::kProtected, "it is encrypted (DRM), and there is no key");
}

std::optional<std::string> rejection_of(const Movie& movie) {
    if (!movie.duration) {
        return "its length cannot be found, as in a raw stream: put it into a container, such as "
               "MKV, first";
    }
    if (*movie.duration < 1) {
        return "it is shorter than a second";
    }
    if (frame_rate(movie.video) <= 0) {
        return "its frame rate cannot be found";
    }
    return std::nullopt;
}

}  // namespace bundle
