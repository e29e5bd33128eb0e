// Times of a job as numbers and as text.

#include <wx/datetime.h>
#include <wx/tokenzr.h>

#include <cmath>

#include "convert/Movie.h"

namespace {

constexpr long kSecondsPerDay = 86400;
constexpr const char* kUnknown = "??:??:??";

}  // namespace

long Movie::duration_to_seconds(const wxString& text) {
    long total = 0;
    int exponent = 2;
    wxStringTokenizer parts(text, ":");
    for (; parts.HasMoreTokens(); --exponent) {
        long value = 0;
        parts.GetNextToken().ToLong(&value, 10);
        total = static_cast<long>(std::pow(60.0, exponent) * static_cast<double>(value) +
                                  static_cast<double>(total));
    }
    return total;
}

long Movie::millis_to_seconds(long ms) {
    return static_cast<long>(static_cast<double>(static_cast<float>(ms)) / 1000.0);
}

wxString Movie::seconds_to_duration(long seconds) {
    if (seconds > kSecondsPerDay)
        return ">24h";
    return wxTimeSpan::Seconds(seconds).Format(wxDefaultTimeSpanFormat);
}

wxString Movie::time_remaining(long elapsed_arg, long percent_arg) const {
    const bool own = elapsed_arg == -1 && percent_arg == -1;
    const long since_start = own ? elapsed : elapsed_arg;
    // No estimate from the first four seconds.
    if (since_start <= 4 || percent_exact == 0.0F)
        return kUnknown;
    if (percent == 100)
        return "00:00:00";
    const float seconds_per_percent = static_cast<float>(elapsed) / percent_exact;
    return seconds_to_duration(static_cast<long>((100.0 - static_cast<double>(percent_exact)) *
                                                 static_cast<double>(seconds_per_percent)));
}
