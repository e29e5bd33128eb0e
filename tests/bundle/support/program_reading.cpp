#include "bundle/support/program_reading.h"

#include <regex>

namespace {

std::string first_group(const std::string& text, const char* pattern) {
    std::smatch match;
    return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

}  // namespace

std::optional<ReadReport> read_report(const std::string& text) {
    const std::regex pattern(
        R"(Duration: ([0-9:]{8})[\s\S]*Stream #[0-9/.]{3}[\s\S]* Video:[\s\S]* )"
        R"(([0-9]{1,6})x([0-9]{1,6})[ ,/,]{1}[\s\S]* ([0-9/.]+) tb)");
    std::smatch match;
    if (!std::regex_search(text, match, pattern)) {
        return std::nullopt;
    }
    return ReadReport{match[1], match[2], match[3], match[4]};
}

std::string read_conversion_seconds(const std::string& text) {
    return first_group(text, "time=([0-9]+)[0-9/.]{3} bitrate=");
}

std::string read_subtitle_percent(const std::string& text) {
    return first_group(text, R"(ISO File Writing: [\s\S]*\(([0-9]+)\/)");
}
