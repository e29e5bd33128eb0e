#pragma once

#include <array>
#include <string>
#include <string_view>

/// What the tools print for the program: the forms that the tools write (of printf), and beside
/// each the pattern that the program reads it by (a regular expression whose "." matches line
/// ends too).
namespace tool_output {

// ---- what "ffmpeg -i MOVIE" reports on its error stream -----------------------------------------

/// Length as hh:mm:ss.cc, start in seconds, bit rate.
inline constexpr const char* kDurationLine = "  Duration: %s, start: %.6f, bitrate: %s\n";
/// Stream, codec, pixel format, width, height, then the rates of frames, of the stream, of the
/// container's clock and of the codec's.
inline constexpr const char* kVideoLine =
    "    Stream #0.%d: Video: %s, %s, %dx%d, %s fps, %s tbr, %s tbn, %s tbc\n";
/// Stream, codec, sample rate, channels.
inline constexpr const char* kAudioLine = "    Stream #0.%d: Audio: %s, %d Hz, %s\n";
/// Length, width, height and the last rate. Everything binds as late as it can.
inline constexpr const char* kReportPattern =
    "Duration: ([0-9:]{8}).*Stream #[0-9/.]{3}.* Video:.* "
    "([0-9]{1,6})x([0-9]{1,6})[ ,/,]{1}.* ([0-9/.]+) tb";

// ---- the progress of a conversion, on the error stream ------------------------------------------

/// Frames, frames a second, quantizer, kB, whole seconds and hundredths of them, bit rate.
inline constexpr const char* kProgressLine =
    "frame=%5lld fps=%3.0f q=%3.1f size=%8lldkB time=%lld.%02lld bitrate=%s    \r";
/// Whole seconds.
inline constexpr const char* kProgressPattern = "time=([0-9]+)[0-9/.]{3} bitrate=";

// ---- the progress of MP4Box, on the standard output ---------------------------------------------

/// A bar, percent.
inline constexpr const char* kFileProgressLine = "ISO File Writing: |%s| (%d/100)\r";
/// Percent.
inline constexpr const char* kFileProgressPattern = "ISO File Writing: .*\\(([0-9]+)\\/";

/// No text from elsewhere may hold one of these: it could be read as a report or as progress.
inline constexpr std::array<std::string_view, 3> kReserved{"Stream #",
                                                           " bitrate=", "ISO File Writing:"};

// ---- complaints, on the error stream ------------------------------------------------------------

inline constexpr const char* kFFmpeg = "ffmpeg";
inline constexpr const char* kMP4Box = "MP4Box";

/// What each line of a tool's complaint begins with; the program passes on no other lines.
inline std::string complaint_prefix(std::string_view tool) {
    return std::string(tool) + ": ";
}

}  // namespace tool_output
