#pragma once

#include <optional>
#include <string>

/// What the program reads out of a report on a movie.
struct ReadReport {
    std::string duration;
    std::string width;
    std::string height;
    std::string rate;

    bool operator==(const ReadReport&) const = default;
};

/// Reads a report with the program's pattern, in which "." matches line breaks too.
std::optional<ReadReport> read_report(const std::string& text);

/// The whole seconds that the program reads out of a conversion's progress; empty for none.
std::string read_conversion_seconds(const std::string& text);

/// The percentage that the program reads out of the subtitle step's progress; empty for none.
std::string read_subtitle_percent(const std::string& text);
