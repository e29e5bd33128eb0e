#pragma once

#include <optional>
#include <string>
#include <string_view>

// The program's patterns, by plain search instead of regular expressions.

/// The groups of the pattern that reads a probe.
struct ReferenceProbe {
    std::string duration;
    std::string width;
    std::string height;
    std::string rate;
};

/// Nothing where the pattern does not match.
std::optional<ReferenceProbe> reference_probe(std::string_view report);

/// The digits of the first progress record of `text`.
std::optional<std::string> reference_seconds(std::string_view text);

/// The digits of the last percentage in `text`.
std::optional<std::string> reference_percent(std::string_view text);

/// The number between the markers of a version reply.
std::optional<std::string> reference_version(std::string_view reply);
