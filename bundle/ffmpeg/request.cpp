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

using OptionList = std::vector<Option> TranscodeRequest::*;

constexpr OptionList kVideo = &TranscodeRequest::video;
constexpr OptionList kAudio = &TranscodeRequest::audio;
constexpr OptionList kGeneral = &TranscodeRequest::general;
constexpr OptionList kIgnored = nullptr;

/// An old option, and the current one that takes the same value.
struct Translation {
    std::string_view old_name;
    OptionList list;
    std::string_view name;
};

constexpr std::array kTranslations{
    Translation{"-acodec", kAudio, "-c:a"},
    Translation{"-ab", kAudio, "-b:a"},
    Translation{"-ac", kAudio, "-ac"},
    Translation{"-ar", kAudio, "-ar"},
    Translation{"-coder", kVideo, "-coder"},
    Translation{"-flags", kVideo, "-flags:v"},
    Translation{"-cmp", kVideo, "-cmp"},
    Translation{"-partitions", kVideo, "-partitions"},
    Translation{"-me_method", kVideo, "-motion-est"},
    Translation{"-subq", kVideo, "-subq"},
    Translation{"-me_range", kVideo, "-me_range"},
    Translation{"-g", kVideo, "-g"},
    Translation{"-keyint_min", kVideo, "-keyint_min"},
    Translation{"-sc_threshold", kVideo, "-sc_threshold"},
    Translation{"-i_qfactor", kVideo, "-i_qfactor"},
    Translation{"-b_strategy", kVideo, "-b_strategy"},
    Translation{"-qcomp", kVideo, "-qcomp"},
    Translation{"-qmin", kVideo, "-qmin"},
    Translation{"-qmax", kVideo, "-qmax"},
    Translation{"-qdiff", kVideo, "-qdiff"},
    Translation{"-bf", kVideo, "-bf"},
    Translation{"-directpred", kVideo, "-direct-pred"},
    Translation{"-trellis", kVideo, "-trellis"},
    Translation{"-wpredp", kVideo, "-weightp"},
    Translation{"-rc_lookahead", kVideo, "-rc-lookahead"},
    Translation{"-maxrate", kVideo, "-maxrate:v"},
    Translation{"-bufsize", kVideo, "-bufsize:v"},
    Translation{"-crf", kVideo, "-crf"},
    Translation{"-threads", kGeneral, "-threads"},
    Translation{"-f", kGeneral, "-f"},
    // The AAC encoder is not experimental.
    Translation{"-strict", kIgnored, ""},
};

/// The flags of the old "-flags2", each of which is a separate option of x264.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kFlags2{{
    {"bpyramid", "-b-pyramid"},
    {"mixed_refs", "-mixed-refs"},
    {"fastpskip", "-fast-pskip"},
}};

constexpr int kLongestSide = 16384;

/// A whole number in this range; empty for anything else.
std::optional<int> number(std::string_view text, int least, int most) {
    const auto value = parse_integer(text);
    return value && *value >= least && *value <= most ? std::optional(static_cast<int>(*value))
                                                      : std::nullopt;
}

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
            request_.rate = parse_rational(value);
            return request_.rate ? MaybeFailure()
                                 : wrong_usage("not a frame rate: " + in_quotes(value));
        }
        if (name == "-level") {
            return set(request_.level, number(value, 10, 62), "an H.264 level", value);
        }
        if (name == "-refs") {
            return set(request_.reference_frames, number(value, 1, 16),
                       "a number of reference frames", value);
        }
        return name == "-flags2" ? flags2(value) : translated(name, value);
    }

    static MaybeFailure set(int& member, std::optional<int> number, const char* what, Value value) {
        member = number.value_or(member);
        return number ? MaybeFailure()
                      : wrong_usage("not " + std::string(what) + ": " + in_quotes(value));
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
        const auto width = number(std::string_view(value).substr(0, cut), 0, kLongestSide);
        const auto height = number(std::string_view(value).substr(std::min(cut + 1, value.size())),
                                   0, kLongestSide);
        if (!width || !height || *width + *height == 0) {
            return wrong_usage("not a picture size: " + in_quotes(value));
        }
        request_.width = *width;
        request_.height = *height;
        has_size_ = true;
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
        if (known->list != kIgnored) {
            (request_.*known->list).emplace_back(known->name, value);
        }
        return std::nullopt;
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
