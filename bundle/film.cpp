#include "film.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace bundle {

namespace {

using nlohmann::json;

const json& member(const json& object, const char* key) {
    static const json none;
    if (!object.is_object()) {
        return none;
    }
    const auto found = object.find(key);
    return found == object.end() ? none : *found;
}

std::string text(const json& object, const char* key) {
    const json& value = member(object, key);
    return value.is_string() ? value.get<std::string>() : std::string();
}

/// ffprobe writes some whole numbers as numbers and others as text.
int whole(const json& object, const char* key) {
    const json& value = member(object, key);
    const auto number = value.is_number_integer() ? std::optional(value.get<std::int64_t>())
                                                  : parse_integer(text(object, key));
    return number && *number >= 0 && *number <= 1'000'000 ? static_cast<int>(*number) : 0;
}

/// A quarter turn to either side exchanges width and height.
bool is_on_its_side(const json& stream) {
    for (const json& side_data : member(stream, "side_data_list")) {
        const json& rotation = member(side_data, "rotation");
        if (rotation.is_number() && std::lround(rotation.get<double>()) % 180 != 0) {
            return true;
        }
    }
    return false;
}

VideoStream video_from(const json& stream) {
    VideoStream video;
    video.index = whole(stream, "index");
    video.codec = text(stream, "codec_name");
    video.pixel_format = text(stream, "pix_fmt");
    video.width = whole(stream, "width");
    video.height = whole(stream, "height");
    video.average_rate = parse_rational(text(stream, "avg_frame_rate"));
    video.base_rate = parse_rational(text(stream, "r_frame_rate"));
    video.time_base = parse_rational(text(stream, "time_base"));
    if (const auto aspect = parse_rational(text(stream, "sample_aspect_ratio"), ':')) {
        video.width = static_cast<int>(std::lround(video.width * aspect->value()));
    }
    if (is_on_its_side(stream)) {
        std::swap(video.width, video.height);
    }
    return video;
}

AudioStream audio_from(const json& stream) {
    return {whole(stream, "index"), text(stream, "codec_name"), whole(stream, "sample_rate"),
            whole(stream, "channels")};
}

bool is_film_picture(const json& stream) {
    return text(stream, "codec_type") == "video" && !text(stream, "codec_name").empty() &&
           whole(stream, "width") > 0 && whole(stream, "height") > 0 &&
           whole(member(stream, "disposition"), "attached_pic") == 0;
}

bool is_known_sound(const json& stream) {
    return text(stream, "codec_type") == "audio" && !text(stream, "codec_name").empty();
}

}  // namespace

const char* const kFilmEntries =
    "format=duration,start_time,bit_rate:stream=index,codec_type,codec_name,pix_fmt,width,height,"
    "sample_aspect_ratio,avg_frame_rate,r_frame_rate,time_base,duration,sample_rate,channels:"
    "stream_disposition=attached_pic:stream_side_data=rotation";

Result<Film> film_from(const json& probed) {
    const json* video = nullptr;
    const json* audio = nullptr;
    for (const json& stream : member(probed, "streams")) {
        if (video == nullptr && is_film_picture(stream)) {
            video = &stream;
        } else if (audio == nullptr && is_known_sound(stream)) {
            audio = &stream;
        }
    }
    if (video == nullptr) {
        return Failure{"not a movie: there is no video in it"};
    }
    Film film;
    const json& format = member(probed, "format");
    film.duration = parse_decimal(text(format, "duration"));
    if (!film.duration) {
        film.duration = parse_decimal(text(*video, "duration"));
    }
    film.start = parse_decimal(text(format, "start_time")).value_or(0);
    film.bit_rate = parse_integer(text(format, "bit_rate"));
    film.video = video_from(*video);
    if (audio != nullptr) {
        film.audio = audio_from(*audio);
    }
    return film;
}

double frame_rate(const VideoStream& video) {
    const auto& rate = video.average_rate ? video.average_rate : video.base_rate;
    return rate ? rate->value() : 0;
}

}  // namespace bundle
