#include "fuzz/reference.h"

#include <algorithm>
#include <cstddef>

namespace {

using std::size_t;
using std::string_view;

constexpr string_view kDigits = "0123456789";
constexpr string_view kDigitsAndDots = "0123456789/.";

/// The longest prefix of `text` that consists of `characters`.
string_view run_of(string_view text, string_view characters) {
    return text.substr(0, text.find_first_not_of(characters));
}

/// The first result of `read` at `from` or before it, down to `least`: the rest after a greedy
/// ".*".
template <class Read>
auto last_of(string_view text, size_t least, const Read& read) {
    for (size_t at = text.size() + 1; at-- > least;) {
        if (auto found = read(at))
            return found;
    }
    return decltype(read(least)){};
}

/// " 25 tb"
std::optional<string_view> rate_at(string_view text, size_t at) {
    if (!text.substr(at).starts_with(' '))
        return std::nullopt;
    const string_view rate = run_of(text.substr(at + 1), kDigitsAndDots);
    if (rate.empty() || !text.substr(at + 1 + rate.size()).starts_with(" tb"))
        return std::nullopt;
    return rate;
}

/// One to six digits.
std::optional<string_view> side_of(string_view text) {
    const string_view side = run_of(text, kDigits);
    return side.empty() || side.size() > 6 ? std::nullopt : std::optional(side);
}

/// " 1280x720," and somewhere after it a rate.
std::optional<ReferenceProbe> size_at(string_view text, size_t at) {
    if (!text.substr(at).starts_with(' '))
        return std::nullopt;
    const auto width = side_of(text.substr(at + 1));
    if (!width || !text.substr(at + 1 + width->size()).starts_with('x'))
        return std::nullopt;
    const size_t second = at + 2 + width->size();
    const auto height = side_of(text.substr(second));
    const size_t end = second + (height ? height->size() : 0);
    if (!height || end >= text.size() || string_view(" ,/").find(text[end]) == string_view::npos)
        return std::nullopt;
    const auto rate = last_of(text, end + 1, [&](size_t from) { return rate_at(text, from); });
    if (!rate)
        return std::nullopt;
    return ReferenceProbe{"", std::string(*width), std::string(*height), std::string(*rate)};
}

std::optional<ReferenceProbe> video_at(string_view text, size_t at) {
    constexpr string_view kVideo = " Video:";
    if (!text.substr(at).starts_with(kVideo))
        return std::nullopt;
    return last_of(text, at + kVideo.size(), [&](size_t from) { return size_at(text, from); });
}

/// "Stream #0.1"
std::optional<ReferenceProbe> stream_at(string_view text, size_t at) {
    constexpr string_view kStream = "Stream #";
    if (!text.substr(at).starts_with(kStream))
        return std::nullopt;
    const size_t number = at + kStream.size();
    if (run_of(text.substr(number, 3), kDigitsAndDots).size() < 3)
        return std::nullopt;
    return last_of(text, number + 3, [&](size_t from) { return video_at(text, from); });
}

}  // namespace

std::optional<ReferenceProbe> reference_probe(string_view report) {
    constexpr string_view kDuration = "Duration: ";
    for (size_t at = report.find(kDuration); at != string_view::npos;
         at = report.find(kDuration, at + 1)) {
        const size_t start = at + kDuration.size();
        const string_view duration = run_of(report.substr(start, 8), "0123456789:");
        if (duration.size() < 8)
            continue;
        auto found =
            last_of(report, start + 8, [&](size_t from) { return stream_at(report, from); });
        if (found) {
            found->duration = duration;
            return found;
        }
    }
    return std::nullopt;
}

std::optional<std::string> reference_seconds(string_view text) {
    constexpr string_view kTime = "time=";
    for (size_t at = text.find(kTime); at != string_view::npos; at = text.find(kTime, at + 1)) {
        const string_view rest = text.substr(at + kTime.size());
        const string_view time = run_of(rest, kDigitsAndDots);
        if (time.size() < 4 || !rest.substr(time.size()).starts_with(" bitrate="))
            continue;
        const string_view seconds = time.substr(0, time.size() - 3);
        if (run_of(seconds, kDigits) == seconds)
            return std::string(seconds);
    }
    return std::nullopt;
}

std::optional<std::string> reference_percent(string_view text) {
    constexpr string_view kWriting = "ISO File Writing: ";
    const size_t start = std::min(text.find(kWriting), text.size());
    return last_of(text, start + kWriting.size(), [&](size_t at) -> std::optional<std::string> {
        if (!text.substr(at).starts_with('('))
            return std::nullopt;
        const string_view percent = run_of(text.substr(at + 1), kDigits);
        if (percent.empty() || !text.substr(at + 1 + percent.size()).starts_with('/'))
            return std::nullopt;
        return std::string(percent);
    });
}

std::optional<std::string> reference_version(string_view reply) {
    constexpr string_view kOpen = "CURRENT_VERSION=>";
    constexpr string_view kClose = "<=CURRENT_VERSION";
    for (size_t at = reply.find(kOpen); at != string_view::npos; at = reply.find(kOpen, at + 1)) {
        string_view rest = reply.substr(at + kOpen.size());
        const string_view version = run_of(rest, kDigitsAndDots);
        rest.remove_prefix(version.size());
        if (rest.starts_with('b'))
            rest.remove_prefix(1);
        if (rest.starts_with(kClose))
            return std::string(version);
    }
    return std::nullopt;
}
