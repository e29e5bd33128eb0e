#include "movie/movie_tags.h"

#include <array>
#include <ctime>
#include <nlohmann/json.hpp>
#include <regex>

#include "core/json_reading.h"
#include "movie/language_code.h"

namespace bundle {

namespace {

using nlohmann::json;

constexpr const char* kPhoneDate = "com.apple.quicktime.creationdate";
constexpr const char* kPhonePlace = "com.apple.quicktime.location.ISO6709";

/// A valid date and time.
bool exists(const std::cmatch& found) {
    const auto part = [&found](std::size_t at) { return std::stoi(found.str(at)); };
    std::tm time{};
    time.tm_year = part(1) - 1900;
    time.tm_mon = part(2) - 1;
    time.tm_mday = part(3);
    time.tm_hour = 12;
    std::tm settled = time;
    return ::timegm(&settled) != -1 && settled.tm_mon == time.tm_mon &&
           settled.tm_mday == time.tm_mday && part(4) < 24 && part(5) < 60 && part(6) < 60;
}

/// The first text that is not empty.
std::string first_of(std::initializer_list<std::string> texts) {
    for (const std::string& text : texts) {
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

void append_tag(std::vector<std::string>& arguments, const std::string& option,
                const std::string& name, const std::string& value) {
    if (!value.empty()) {
        arguments.insert(arguments.end(), {option, name + "=" + value});
    }
}

}  // namespace

std::string recording_time(std::string_view text) {
    static const std::regex form(
        R"((\d{4})-(\d\d)-(\d\d)[T ](\d\d):(\d\d):(\d\d)(\.\d+)?(Z|[+-]\d\d:?\d\d)?)");
    constexpr int kLastUnset = 1970;
    constexpr int kBeyond = 2040;
    std::cmatch found;
    if (!std::regex_match(text.begin(), text.end(), found, form)) {
        return {};
    }
    const int year = std::stoi(found.str(1));
    return year > kLastUnset && year < kBeyond && exists(found) ? std::string(text) : "";
}

MovieTags movie_tags(const json& format, const json& video, const json& audio) {
    const json& tags = member(format, "tags");
    const std::string by_phone = recording_time(text(tags, kPhoneDate));
    const std::string language = text(member(audio, "tags"), "language");
    MovieTags found;
    found.recorded = first_of({by_phone, recording_time(text(tags, "creation_time")),
                               recording_time(text(member(video, "tags"), "creation_time"))});
    found.local_day = text(tags, "date").empty() ? by_phone : "";
    found.place = text(tags, "location").empty() ? text(tags, kPhonePlace) : "";
    found.audio_language = language.empty() ? "" : mp4_language(language);
    return found;
}

std::vector<std::string> tag_arguments(const MovieTags& tags) {
    std::vector<std::string> arguments;
    append_tag(arguments, "-metadata", "creation_time", tags.recorded);
    append_tag(arguments, "-metadata", "date", tags.local_day);
    append_tag(arguments, "-metadata", "location", tags.place);
    append_tag(arguments, "-metadata:s:a:0", "language", tags.audio_language);
    return arguments;
}

}  // namespace bundle
