#include "movie/movie.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

#include "core/json_reading.h"
#include "movie/decoding_delay.h"
#include "movie/header_duration.h"
#include "movie/programs.h"
#include "movie/rejection.h"
#include "movie/stereo_pair.h"
#include "movie/stream_choice.h"

namespace bundle {

namespace {

using nlohmann::json;

// Rounded times make the average of a constant rate differ by less.
constexpr double kUneven = 0.01;

/// Some files count the fields of interlaced frames.
bool is_too_high(const Rational& average, const std::optional<Rational>& base) {
    return base && average.value() > base->value() * (1 + kUneven);
}

std::optional<double> rotation_of(const json& stream) {
    for (const json& side_data : member(stream, "side_data_list")) {
        const json& rotation = member(side_data, "rotation");
        if (rotation.is_number()) {
            return rotation.get<double>();
        }
    }
    return std::nullopt;
}

/// The name of a colour property; "reserved" numbers have no meaning.
std::string colour_name(const json& stream, const char* key) {
    const std::string name = text(stream, key);
    return name == "reserved" ? "" : name;
}

Colour colour_of(const json& stream) {
    return {colour_name(stream, "color_range"), colour_name(stream, "color_space"),
            colour_name(stream, "color_primaries"), colour_name(stream, "color_transfer")};
}

VideoStream video_from(const json& stream) {
    VideoStream video;
    video.index = whole(stream, "index");
    video.codec = text(stream, "codec_name");
    video.pixel_format = text(stream, "pix_fmt");
    video.field_order = text(stream, "field_order");
    video.stored = {whole(stream, "width"), whole(stream, "height")};
    video.aspect = parse_rational(text(stream, "sample_aspect_ratio"), ':');
    video.rotation = rotation_of(stream);
    video.shown = shown_size(video.stored, video.aspect, video.rotation.value_or(0));
    video.colour = assumed_colour(colour_of(stream), video.pixel_format, video.stored);
    video.needs_colour_conversion = needs_colour_conversion(video.colour);
    video.average_rate = parse_rational(text(stream, "avg_frame_rate"));
    video.base_rate = parse_rational(text(stream, "r_frame_rate"));
    video.time_base = parse_rational(text(stream, "time_base"));
    video.has_uneven_steps = whole(stream, "has_uneven_steps") != 0;
    return video;
}

AudioStream audio_from(const json& stream) {
    return {whole(stream, "index"),
            text(stream, "codec_name"),
            whole(stream, "sample_rate"),
            whole(stream, "channels"),
            !text(stream, "channel_layout").empty(),
            whole(stream, "has_jittery_times") != 0,
            {},
            whole(stream, "has_false_times") != 0};
}

/// ffprobe knows the format of decoded video or audio only if there is a decoder.
bool is_decodable(const json& stream) {
    if (text(stream, "codec_name").empty()) {
        return false;
    }
    if (text(stream, "codec_type") == "audio") {
        return !text(stream, "sample_fmt").empty() && whole(stream, "sample_rate") > 0 &&
               whole(stream, "channels") > 0;
    }
    return !text(stream, "pix_fmt").empty() && whole(stream, "width") > 0 &&
           whole(stream, "height") > 0;
}

bool is_still(const json& disposition) {
    return whole(disposition, "attached_pic") != 0 || whole(disposition, "timed_thumbnails") != 0 ||
           whole(disposition, "still_image") != 0;
}

std::optional<int> packets_seen(const json& probed, int index) {
    const json& packets = member(probed, "packets");
    if (packets.empty()) {
        return std::nullopt;
    }
    int count = 0;
    for (const json& packet : packets) {
        count += whole(packet, "stream_index") == index ? 1 : 0;
    }
    return count;
}

StreamFacts facts_of(const json& probed, const json& stream, const std::set<int>& unusable) {
    const json& disposition = member(stream, "disposition");
    StreamFacts facts;
    facts.index = whole(stream, "index");
    facts.decodable = is_decodable(stream) && !unusable.contains(facts.index);
    facts.is_default = whole(disposition, "default") != 0;
    facts.is_still = is_still(disposition);
    facts.packets_seen = packets_seen(probed, facts.index);
    facts.pixels = std::int64_t{whole(stream, "width")} * whole(stream, "height");
    facts.audio_kind = audio_kind(disposition);
    return facts;
}

/// The streams of one kind in the movie's program, each with the facts for the choice.
struct Candidates {
    std::vector<const json*> streams;
    std::vector<StreamFacts> facts;
};

Candidates candidates(const json& probed, const char* kind, const std::set<int>& unusable,
                      const std::set<int>& foreign = {}) {
    Candidates found;
    for (const json& stream : member(probed, "streams")) {
        if (text(stream, "codec_type") == kind && !foreign.contains(whole(stream, "index"))) {
            found.streams.push_back(&stream);
            found.facts.push_back(facts_of(probed, stream, unusable));
        }
    }
    return found;
}

/// The second of two streams that are the sides of a stereo pair.
std::optional<int> right_side(const json& format, const Candidates& audio) {
    if (audio.streams.size() == 2 && audio.facts[0].decodable && audio.facts[1].decodable &&
        are_two_sides(format, *audio.streams[0], *audio.streams[1])) {
        return audio.facts[1].index;
    }
    return std::nullopt;
}

}  // namespace

const char* const kMovieEntries =
    "format=format_name,duration,start_time,bit_rate:"
    "format_tags=creation_time,date,location,com.apple.quicktime.creationdate,"
    "com.apple.quicktime.location.ISO6709:"
    "stream=index,codec_type,codec_name,codec_tag_string,pix_fmt,width,height,"
    "sample_aspect_ratio,field_order,has_b_frames,"
    "color_range,color_space,color_transfer,color_primaries,avg_frame_rate,r_frame_rate,time_base,"
    "start_time,duration,sample_fmt,sample_rate,channels,channel_layout:"
    "stream_disposition=default,forced,attached_pic,timed_thumbnails,still_image,dub,comment,"
    "karaoke,hearing_impaired,visual_impaired,clean_effects,descriptions:"
    "stream_tags=language,title,DURATION,DURATION-eng,creation_time:"
    "stream_side_data=rotation:program_stream=index:"
    "packet=stream_index,pts_time,duration_time:packet_side_data=side_data_type";

Result<Movie> movie_from(const json& probed, const std::set<int>& unusable) {
    if (is_protected(probed)) {
        return protected_movie();
    }
    const Candidates videos = candidates(probed, "video", unusable);
    const auto video = choose_video(videos.facts);
    if (!video) {
        return no_video(probed);
    }
    const json& stream = *videos.streams[*video];
    const json& format = member(probed, "format");
    Movie movie;
    movie.start = parse_decimal(text(format, "start_time")).value_or(0);
    movie.bit_rate = parse_integer(text(format, "bit_rate"));
    movie.video = video_from(stream);
    movie.video.may_be_one_frame = may_be_one_frame(videos.facts[*video]);
    const std::set<int> foreign = streams_of_other_programs(probed, movie.video.index);
    const Candidates audio = candidates(probed, "audio", unusable, foreign);
    json audio_stream;
    if (const auto chosen = choose_audio(audio.facts)) {
        audio_stream = *audio.streams[*chosen];
        movie.audio = audio_from(audio_stream);
        movie.audio->right = right_side(format, audio);
    }
    movie.video.decoding_delay = decoding_delay(probed, stream, audio_stream);
    movie.subtitles = text_streams(candidates(probed, "subtitle", unusable, foreign).streams);
    movie.tags = movie_tags(format, stream, audio_stream);
    movie.input_options = input_options(probed);
    set_duration(movie, probed);
    movie.has_undecodable_audio = !movie.audio && !audio.streams.empty();
    return movie;
}

double frame_rate(const VideoStream& video) {
    if (!video.average_rate || is_too_high(*video.average_rate, video.base_rate)) {
        return video.base_rate ? video.base_rate->value() : 0;
    }
    return video.average_rate->value();
}

bool has_variable_rate(const VideoStream& video) {
    return video.average_rate && video.base_rate &&
           (video.has_uneven_steps ||
            std::abs(video.average_rate->value() / video.base_rate->value() - 1) > kUneven);
}

}  // namespace bundle
