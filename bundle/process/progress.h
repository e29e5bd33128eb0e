#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// How far a run of ffmpeg has come; what it can't tell yet is empty.
struct Progress {
    std::int64_t frames = 0;
    std::int64_t repeated = 0;     ///< of the frames, those that ffmpeg filled a gap with
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

    void add(std::string_view piece);

  private:
    void read_line(std::string_view line);

    std::function<void(const Progress&)> on_progress_;
    std::string line_;  ///< the unfinished line
    Progress progress_;
};

/// Keeps the progress of a work that begins anew from going back.
class FurthestProgress {
  public:
    /// The latest progress, or what came before when that was further.
    const Progress& with(const Progress& latest);

  private:
    Progress furthest_;
};

/// The progress as old versions of ffmpeg write it, ended by a carriage return:
/// "frame=  123 fps= 45 q=22.0 size=    1234kB time=30.04 bitrate= 336.5kbits/s". The time is in
/// seconds, always with two decimals.
std::string old_progress_line(const Progress& progress);

/// Progress through a file in whole percent, as the MP4 tool writes it, ended by a carriage return:
/// "ISO File Writing: |=========           | (45/100)". Held to the range from 0 to 100.
std::string file_progress_line(std::int64_t percent);

}  // namespace bundle
