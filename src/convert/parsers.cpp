#include "convert/parsers.h"

#include <wx/regex.h>

#include "convert/Movie.h"

namespace {

/// First group of `pattern` in `text` as a number.
std::optional<long> first_group(const wxRegEx& pattern, const wxString& text) {
    if (!pattern.Matches(text))
        return std::nullopt;
    long value = 0;
    pattern.GetMatch(text, 1).ToLong(&value, 10);
    return value;
}

std::int32_t to_int(const wxString& digits) {
    long value = 0;
    digits.ToLong(&value, 10);
    return static_cast<std::int32_t>(value);
}

}  // namespace

ProbeFacts parse_probe(const wxString& report) {
    static const wxRegEx pattern(
        "Duration: ([0-9:]{8}).*Stream #[0-9/.]{3}.* Video:.* "
        "([0-9]{1,6})x([0-9]{1,6})[ ,/,]{1}.* ([0-9/.]+) tb");
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

std::optional<long> parse_transcoded_seconds(const wxString& text) {
    static const wxRegEx pattern("time=([0-9]+)[0-9/.]{3} bitrate=");
    return first_group(pattern, text);
}

std::optional<long> parse_muxed_percent(const wxString& text) {
    static const wxRegEx pattern("ISO File Writing: .*\\(([0-9]+)\\/");
    return first_group(pattern, text);
}
