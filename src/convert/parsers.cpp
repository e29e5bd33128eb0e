#include "convert/parsers.h"

#include <wx/regex.h>

#include <algorithm>
#include <limits>

#include "convert/Movie.h"
#include "protocol/tool_output.h"

namespace {

/// First group of `pattern`, which is digits, in `text` as a number; the largest for a larger one.
std::optional<std::int32_t> first_group(const wxRegEx& pattern, const wxString& text) {
    if (!pattern.Matches(text))
        return std::nullopt;
    constexpr long kLargest = std::numeric_limits<std::int32_t>::max();
    long value = 0;
    if (!pattern.GetMatch(text, 1).ToLong(&value, 10))
        return kLargest;
    return static_cast<std::int32_t>(std::min(value, kLargest));
}

std::int32_t to_int(const wxString& digits) {
    long value = 0;
    digits.ToLong(&value, 10);
    return static_cast<std::int32_t>(value);
}

}  // namespace

ProbeFacts parse_probe(const wxString& report) {
    static const wxRegEx pattern(tool_output::kReportPattern);
    ProbeFacts facts;
    if (pattern.Matches(report)) {
        facts.duration =
            static_cast<std::int32_t>(Movie::duration_to_seconds(pattern.GetMatch(report, 1)));
        facts.width = to_int(pattern.GetMatch(report, 2));
        facts.height = to_int(pattern.GetMatch(report, 3));
        // A full stop in every locale; of "30000/1001" the leading number counts.
        pattern.GetMatch(report, 4).ToCDouble(&facts.fps);
    }
    return facts;
}

std::optional<std::int32_t> parse_transcoded_seconds(const wxString& text) {
    static const wxRegEx pattern(tool_output::kProgressPattern);
    return first_group(pattern, text);
}

std::optional<std::int32_t> parse_muxed_percent(const wxString& text) {
    static const wxRegEx pattern(tool_output::kFileProgressPattern);
    return first_group(pattern, text);
}
