#include "ffmpeg/request.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/console.h"

namespace bundle {

namespace {

using Value = const std::string&;

Failure wrong_usage(std::string message) {
    return {std::move(message), kStatusUsage};
}

/// Whom a translated option is for; one for sound is left out for a movie without sound.
enum class For { kVideo, kAudio, kGeneral, kNobody };

/// An old option that keeps its value: its name then, and its name today.
struct Translation {
    std::string_view old_name;
    For whom;
    std::string_view name;
};

constexpr std::array kTranslations{
    Translation{"-acodec", For::kAudio, "-c:a"},
    Translation{"-ab", For::kAudio, "-b:a"},
    Translation{"-ac", For::kAudio, "-ac"},
    Translation{"-ar", For::kAudio, "-ar"},
    Translation{"-coder", For::kVideo, "-coder"},
    Translation{"-flags", For::kVideo, "-flags:v"},
    Translation{"-cmp", For::kVideo, "-cmp"},
    Translation{"-partitions", For::kVideo, "-partitions"},
    Translation{"-me_method", For::kVideo, "-motion-est"},
    Translation{"-subq", For::kVideo, "-subq"},
    Translation{"-me_range", For::kVideo, "-me_range"},
    Translation{"-g", For::kVideo, "-g"},
    Translation{"-keyint_min", For::kVideo, "-keyint_min"},
    Translation{"-sc_threshold", For::kVideo, "-sc_threshold"},
    Translation{"-i_qfactor", For::kVideo, "-i_qfactor"},
    Translation{"-b_strategy", For::kVideo, "-b_strategy"},
    Translation{"-qcomp", For::kVideo, "-qcomp"},
    Translation{"-qmin", For::kVideo, "-qmin"},
    Translation{"-qmax", For::kVideo, "-qmax"},
    Translation{"-qdiff", For::kVideo, "-qdiff"},
    Translation{"-bf", For::kVideo, "-bf"},
    Translation{"-refs", For::kVideo, "-refs"},
    Translation{"-directpred", For::kVideo, "-direct-pred"},
    Translation{"-trellis", For::kVideo, "-trellis"},
    Translation{"-wpredp", For::kVideo, "-weightp"},
    Translation{"-rc_lookahead", For::kVideo, "-rc-lookahead"},
    Translation{"-maxrate", For::kVideo, "-maxrate:v"},
    Translation{"-bufsize", For::kVideo, "-bufsize:v"},
    Translation{"-crf", For::kVideo, "-crf"},
    Translation{"-threads", For::kGeneral, "-threads"},
    Translation{"-f", For::kGeneral, "-f"},
    // The AAC encoder is no experiment any more.
    Translation{"-strict", For::kNobody, ""},
};

/// The switches that old versions gathered in "-flags2"; each is an option of x264's own today.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kFlags2{{
    {"bpyramid", "-b-pyramid"},
    {"mixed_refs", "-mixed-refs"},
    {"fastpskip", "-fast-pskip"},
}};

class Parser {
  public:
    Result<TranscodeRequest> parse(const std::vector<std::string>& arguments) {
        const std::size_t last = arguments.empty() ? 0 : arguments.size() - 1;
        for (std::size_t at = 0; at < last; ++at) {
            const std::string& name = arguments[at];
            if (name == "-y") {
                request_.overwrite = true;
                continue;
            }
            if (at + 1 == last) {
                return wrong_usage("no value follows " + in_quotes(name));
            }
            ++at;
            if (auto failure = option(name, arguments[at])) {
                return *failure;
            }
        }
        if (request_.input.empty() || !has_size_ || arguments[last].empty()) {
            return wrong_usage("usage: ffmpeg -i FILE | ffmpeg -y -i FILE [OPTIONS] -s WxH OUT");
        }
        request_.output = arguments[last];
        return request_;
    }

  private:
    MaybeFailure option(const std::string& name, Value value) {
        if (name == "-i") {
            return input(value);
        }
        if (name == "-s") {
            return size(value);
        }
        if (name == "-r") {
            return rate(value);
        }
        if (name == "-level") {
            return level(value);
        }
        if (name == "-flags2") {
            return flags2(value);
        }
        return translated(name, value);
    }

    MaybeFailure input(Value value) {
        if (!request_.input.empty()) {
            return wrong_usage("more than one input");
        }
        request_.input = value;
        return std::nullopt;
    }

    MaybeFailure size(Value value) {
        const std::size_t cut = std::min(value.find('x'), value.size());
        const auto width = parse_integer(std::string_view(value).substr(0, cut));
        const auto height =
            parse_integer(std::string_view(value).substr(std::min(cut + 1, value.size())));
        const auto fits = [](const auto& side) { return side && *side >= 0 && *side <= 16384; };
        if (!fits(width) || !fits(height) || *width + *height == 0) {
            return wrong_usage("not a picture size: " + in_quotes(value));
        }
        request_.width = static_cast<int>(*width);
        request_.height = static_cast<int>(*height);
        has_size_ = true;
        return std::nullopt;
    }

    MaybeFailure rate(Value value) {
        request_.rate = parse_rational(value);
        return request_.rate ? MaybeFailure()
                             : wrong_usage("not a frame rate: " + in_quotes(value));
    }

    MaybeFailure level(Value value) {
        const auto level = parse_integer(value);
        if (!level || *level < 10 || *level > 62) {
            return wrong_usage("not an H.264 level: " + in_quotes(value));
        }
        request_.level = static_cast<int>(*level);
        return std::nullopt;
    }

    /// "+name+name": each name is switched on.
    MaybeFailure flags2(Value value) {
        for (std::size_t start = 0; start < value.size();) {
            const std::size_t end = std::min(value.find('+', start + 1), value.size());
            const std::string_view flag = std::string_view(value).substr(start, end - start);
            const auto* known =
                std::find_if(kFlags2.begin(), kFlags2.end(), [flag](const auto& entry) {
                    return flag.starts_with('+') && flag.substr(1) == entry.first;
                });
            if (known == kFlags2.end()) {
                return wrong_usage("unknown flag: " + in_quotes(flag));
            }
            request_.video.emplace_back(known->second, "1");
            start = end;
        }
        return std::nullopt;
    }

    MaybeFailure translated(const std::string& name, Value value) {
        const auto* known =
            std::find_if(kTranslations.begin(), kTranslations.end(),
                         [&name](const Translation& entry) { return entry.old_name == name; });
        if (known == kTranslations.end()) {
            return wrong_usage("unknown option: " + in_quotes(name));
        }
        if (auto* options = list_for(known->whom)) {
            options->emplace_back(known->name, value);
        }
        return std::nullopt;
    }

    std::vector<Option>* list_for(For whom) {
        switch (whom) {
            case For::kVideo:
                return &request_.video;
            case For::kAudio:
                return &request_.audio;
            case For::kGeneral:
                return &request_.general;
            case For::kNobody:
                break;
        }
        return nullptr;
    }

    TranscodeRequest request_;
    bool has_size_ = false;
};

}  // namespace

Result<TranscodeRequest> parse_transcode(const std::vector<std::string>& arguments) {
    return Parser().parse(arguments);
}

std::optional<std::string> output_of(const std::vector<std::string>& arguments) {
    const std::size_t count = arguments.size();
    const bool has_input = count > 4 && (arguments[0] == "-i" || arguments[1] == "-i");
    const bool has_output = has_input && arguments[count - 3] == "-s" && !arguments.back().empty();
    return has_output ? std::optional(arguments.back()) : std::nullopt;
}

}  // namespace bundle
