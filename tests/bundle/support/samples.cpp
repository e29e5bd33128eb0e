#include "bundle/support/samples.h"

#include <sstream>

#include "bundle/support/child_run.h"

bool run_ffmpeg(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"ffmpeg", "-nostdin", "-v", "error", "-y"});
    return ChildRun(arguments).wait() == 0;
}

bool make_movie(const std::string& path, const std::string& size, const std::string& rate,
                const std::string& seconds, const std::vector<std::string>& coding) {
    std::vector<std::string> arguments{
        "-f", "lavfi", "-i", "testsrc2=s=" + size + ":r=" + rate + ":d=" + seconds,
        "-f", "lavfi", "-i", "sine=r=44100:d=" + seconds};
    arguments.insert(arguments.end(), coding.begin(), coding.end());
    arguments.push_back("file:" + path);
    return run_ffmpeg(arguments);
}

bool make_movie(const std::string& path) {
    return make_movie(path, "160x120", "25", "2", {"-c:v", "mpeg4", "-c:a", "pcm_s16le"});
}

bool make_silent_movie(const std::string& path) {
    return make_movie(path, "160x120", "25", "1", {"-map", "0:v", "-c:v", "mpeg4"});
}

bool make_movie_with_subtitles(const std::string& path) {
    const TemporaryFolder folder;
    const std::string text = folder.write("text.srt", "1\n00:00:00,100 --> 00:00:00,500\nText\n");
    return run_ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=1", "-i", text, "-c:v",
                       "libx264", "-c:s", "mov_text", "-metadata:s:s",
                       "handler_name=Vantreo subtitles", "file:" + path});
}

nlohmann::json probed(const std::string& path, bool with_packets) {
    std::vector<std::string> words{"ffprobe",       "-v",           "error", "-of",         "json",
                                   "-show_streams", "-show_format", "-i",    "file:" + path};
    if (with_packets) {
        words.emplace_back("-show_packets");
        words.insert(words.end(), {"-show_data_hash", "md5"});
    }
    ChildRun ffprobe(words);
    ffprobe.wait();
    return nlohmann::json::parse(ffprobe.output(), nullptr, false);
}

nlohmann::json only_stream(const nlohmann::json& movie, const std::string& kind) {
    nlohmann::json found;
    for (const auto& stream : movie.value("streams", nlohmann::json::array())) {
        if (stream["codec_type"] == kind) {
            if (!found.is_null()) {
                return nullptr;
            }
            found = stream;
        }
    }
    return found;
}

std::vector<std::string> fixed_options() {
    std::istringstream text(
        "-acodec aac -strict experimental -ab 128k -ac 2 -ar 44100 -coder 0 -flags +loop "
        "-cmp +chroma -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq 6 "
        "-me_range 16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 "
        "-qcomp 0.6 -qmin 10 -qmax 51 -qdiff 4 -bf 0 -refs 2 -directpred 1 -trellis 1 "
        "-flags2 +bpyramid+mixed_refs+fastpskip -wpredp 0 -rc_lookahead 30 -level 30 "
        "-maxrate 10000000 -bufsize 10000000 -crf 21 -threads 0 -f ipod");
    std::vector<std::string> words;
    for (std::string word; text >> word;) {
        words.push_back(word);
    }
    return words;
}

std::vector<std::string> transcode_words(const std::string& input, const std::string& size,
                                         const std::string& output) {
    std::vector<std::string> words{TOOL_FFMPEG, "-y", "-i", input};
    for (const std::string& option : fixed_options()) {
        words.push_back(option);
    }
    words.insert(words.end(), {"-s", size, output});
    return words;
}
