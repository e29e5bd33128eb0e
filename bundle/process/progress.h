#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/lines.h"

namespace bundle {

/// How far a run of ffmpeg has come; empty: not known yet.
struct Progress {
    std::int64_t frames = 0;
    std::int64_t repeated = 0;     ///< of these, the ones that fill gaps
    double frames_per_second = 0;  ///< of the work, not of the movie
    double quantizer = 0;
    std::optional<std::int64_t> bytes;         ///< written so far
    std::optional<std::int64_t> microseconds;  ///< of movie written so far
    std::optional<double> kilobits_per_second;
};

/// Reads the "key=value" lines of ffmpeg's "-progress", however they are cut.
class ProgressReader {
  public:
    /// `on_progress` is called at the end of each report, which the key "progress" marks.
    explicit ProgressReader(std::function<void(const Progress&)> on_progress);

    ProgressReader(const ProgressReader&) = delete;
    ProgressReader& operator=(const ProgressReader&) = delete;

    void add(std::string_view piece) { lines_.add(piece); }

  private:
    void read_line(std::string_view line);

    std::function<void(const Progress&)> on_progress_;
    LineReader lines_;
    Progress progress_;
};

/// Keeps progress from going back when the work starts again.
class FurthestProgress {
  public:
    /// The latest progress, or an earlier one that was further.
    const Progress& with(const Progress& latest);

  private:
    Progress furthest_;
};

/// The progress as old versions of ffmpeg write it, ended by a carriage return:
/// "frame=  123 fps= 45 q=22.0 size=    1234kB time=30.04 bitrate= 336.5kbits/s". The time is in
/// seconds, always with two decimals.
std::string old_progress_line(const Progress& progress);

/// Progress through a file in whole percent, as the MP4 tool writes it, ended by a carriage return:
/// "ISO File Writing: |=========           | (45/100)". `percent` is clamped to 0 to 100.
std::string file_progress_line(std::int64_t percent);

}  // namespace bundle
