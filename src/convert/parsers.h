#pragma once

#include <wx/string.h>

#include <cstdint>
#include <optional>

// Readers of the tools' output, by the patterns of protocol/tool_output.h.

/// Facts of a source movie; zeros if the report has none.
struct ProbeFacts {
    std::int32_t duration = 0;  ///< whole seconds
    std::int32_t width = 0;     ///< pixels
    std::int32_t height = 0;
    double fps = 0.0;
};

/// Reads the report of "ffmpeg -i". The groups bind as late as they can: the size is that of the
/// last video stream, and the rate is the last number before " tb" (the codec's time base).
ProbeFacts parse_probe(const wxString& report);

/// Whole seconds of output in the first progress record of `text`; empty if `text` has no complete
/// record.
std::optional<std::int32_t> parse_transcoded_seconds(const wxString& text);

/// The last percentage of MP4Box in `text`, not limited to 100; empty if there is none.
std::optional<std::int32_t> parse_muxed_percent(const wxString& text);
