#pragma once

#include <array>
#include <string>
#include <string_view>

namespace bundle {

/// The steps that make one output, in their order.
enum class Step { kConversion, kSubtitles };

inline constexpr std::size_t kSteps = 2;

/// What a failure note says about one step, in plain words.
struct FailureNote {
    std::string happened;       ///< what went wrong, and why
    std::string untouched;      ///< what is unchanged, or what was made all the same
    std::string last_lines;     ///< of the tool that did the work; may be empty
    bool is_delivered = false;  ///< the step has made an MP4 file all the same
    std::string advice = {};    ///< what the person can do; may be empty
    std::string headline = {};  ///< one sentence for a notification; empty: none is shown
};

/// The note's text about each step; empty for a step that it does not mention.
using Parts = std::array<std::string, kSteps>;

std::size_t place_of(Step step);

/// True for the text of a failure note.
bool is_note(std::string_view text);

Parts parts_of(const std::string& note);

/// The whole note; empty when all parts are.
std::string note_text(const Parts& parts);

/// What a note says about one step.
std::string part_text(Step step, const FailureNote& note);

/// True for the part about a conversion that made no MP4 file.
bool says_not_made(std::string_view part);

}  // namespace bundle
