#include "movie/input_options.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "clock/transport_stream.h"
#include "core/json_reading.h"
#include "movie/read_limits.h"

namespace bundle {

namespace {

using nlohmann::json;

const char* const kKey = "input_options";

bool has_known_format(const json& stream) {
    return text(stream, "codec_type") == "audio" && !text(stream, "sample_fmt").empty() &&
           whole(stream, "sample_rate") > 0 && whole(stream, "channels") > 0;
}

}  // namespace

InputOptions options_by_head(std::string_view head) {
    return looks_like_transport_stream(head) ? InputOptions{"-merge_pmt_versions", "1"}
                                             : InputOptions();
}

std::string read_head(const std::string& path) {
    std::string head(kTransportHead, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

InputOptions look_far(InputOptions options) {
    options.insert(options.end(),
                   {"-probesize", std::to_string(kFarLook), "-analyzeduration", "120000000"});
    return options;
}

bool sound_may_begin_later(const json& probed) {
    const std::string format = text(member(probed, "format"), "format_name");
    const json& streams = member(probed, "streams");
    return (format == "mpeg" || format == "mpegts") &&
           std::none_of(streams.begin(), streams.end(), has_known_format);
}

void keep_input_options(json& probed, const InputOptions& options) {
    probed[kKey] = options;
}

InputOptions input_options(const json& probed) {
    InputOptions options;
    for (const json& word : member(probed, kKey)) {
        if (word.is_string()) {
            options.push_back(word.get<std::string>());
        }
    }
    return options;
}

}  // namespace bundle
