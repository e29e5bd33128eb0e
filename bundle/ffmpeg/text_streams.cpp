#include "ffmpeg/text_streams.h"

#include "core/files.h"
#include "ffmpeg/words.h"

namespace bundle {

std::vector<std::string> text_options(const std::vector<TextStream>& streams) {
    Words options;
    for (const TextStream& stream : streams) {
        const std::string index = std::string(":").append(std::to_string(stream.index));
        // Text in old encodings passes through; its encoding is detected later.
        append(options, {"-sub_charenc_mode" + index, "ignore"});
        if (is_teletext(stream)) {
            append(options, {"-txt_format" + index, "text", "-txt_page" + index, "subtitle"});
            append(options, {"-fix_sub_duration" + index});
        }
    }
    return options;
}

std::vector<std::string> text_input(const std::vector<TextStream>& streams, const std::string& path,
                                    double offset) {
    Words input = text_options(streams);
    append(input, {"-protocol_whitelist", "file,pipe", "-advanced_editlist", "0"});
    append(input, {"-itsoffset", std::to_string(offset), "-i", file_url(path)});
    return input;
}

std::vector<std::string> script_output(const TextStream& stream, int input, int descriptor) {
    return {"-map",
            std::to_string(input) + ":" + std::to_string(stream.index),
            "-c:s",
            "ass",
            "-avoid_negative_ts",
            "disabled",
            "-ignore_readorder",
            "1",
            "-f",
            "ass",
            "pipe:" + std::to_string(descriptor)};
}

}  // namespace bundle
