#include "bundle/support/program_reading.h"

#include <regex>

#include "protocol/tool_output.h"

namespace {

/// The program's "." matches line ends too.
std::regex regex(const char* pattern) {
    return std::regex(std::regex_replace(pattern, std::regex(R"(\.\*)"), R"([\s\S]*)"));
}

std::string first_group(const std::string& text, const char* pattern) {
    std::smatch match;
    return std::regex_search(text, match, regex(pattern)) ? match[1].str() : "";
}

}  // namespace

std::optional<ReadReport> read_report(const std::string& text) {
    std::smatch match;
    if (!std::regex_search(text, match, regex(tool_output::kReportPattern))) {
        return std::nullopt;
    }
    return ReadReport{match[1], match[2], match[3], match[4]};
}

std::string read_conversion_seconds(const std::string& text) {
    return first_group(text, tool_output::kProgressPattern);
}

std::string read_subtitle_percent(const std::string& text) {
    return first_group(text, tool_output::kFileProgressPattern);
}
