#pragma once

#include <array>
#include <string>
#include <string_view>

namespace bundle {

/// The steps that make one output, in their order.
enum class Step { kConversion, kSubtitles };

inline constexpr std::size_t kSteps = 2;

/// What a trace says about one step, in plain words.
struct Report {
    std::string happened;       ///< what went wrong, and why
    std::string untouched;      ///< what was left as it was, or what was delivered
    std::string last_lines;     ///< of the tool that did the work; may be empty
    bool is_delivered = false;  ///< the step has put an MP4 file in the output's place all the same
    std::string advice = {};    ///< what the person can do; may be empty
    std::string headline = {};  ///< one sentence for a notification; empty: none is shown
};

/// What a trace says about each step; empty for a step that it does not mention.
using Parts = std::array<std::string, kSteps>;

std::size_t place_of(Step step);

/// True for the text of a trace, also of an earlier version's.
bool is_trace(std::string_view text);

Parts parts_of(const std::string& trace);

/// The whole trace; empty when no part says anything.
std::string trace_text(const Parts& parts);

/// The part of a trace that says this about the step.
std::string part_text(Step step, const Report& report);

/// True for the part of a conversion that made no MP4 file, also in an earlier version's words.
bool says_not_made(std::string_view part);

}  // namespace bundle
