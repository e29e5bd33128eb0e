#include "movie/stereo_pair.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string>

#include "core/json_reading.h"

namespace bundle {

namespace {

using nlohmann::json;

bool is_of_a_camera(const json& format) {
    const std::string name = text(format, "format_name");
    return name == "mxf" || name.starts_with("mov,");
}

bool is_mono_pcm(const json& stream) {
    return text(stream, "codec_name").starts_with("pcm_") && whole(stream, "channels") == 1;
}

bool has_title(const json& stream) {
    return !text(member(stream, "tags"), "title").empty();
}

}  // namespace

bool are_two_sides(const json& format, const json& one, const json& other) {
    constexpr std::array kSame{"codec_name", "sample_rate", "start_time", "duration"};
    return is_of_a_camera(format) && is_mono_pcm(one) && is_mono_pcm(other) && !has_title(one) &&
           !has_title(other) &&
           std::all_of(kSame.begin(), kSame.end(),
                       [&](const char* key) { return member(one, key) == member(other, key); }) &&
           member(one, "disposition") == member(other, "disposition") &&
           text(member(one, "tags"), "language") == text(member(other, "tags"), "language");
}

}  // namespace bundle
