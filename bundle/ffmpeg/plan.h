#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ffmpeg/request.h"
#include "movie/movie.h"

namespace bundle {

/// What the system's ffmpeg can do that not every build of ffmpeg can.
struct SystemFilters {
    bool can_convert_colours = true;  ///< it has the zscale and tonemap filters
    bool can_decode_teletext = true;
};

/// Everything about a conversion that can be decided before ffmpeg is started.
struct ConversionPlan {
    std::string input;                        ///< the movie
    bool skips_jumps = false;                 ///< ffmpeg reads it through a `JumpingClock`'s feed
    std::vector<std::string> input_options;   ///< of the movie
    std::vector<std::string> text_input;      ///< a second input for the subtitles; may be empty
    std::vector<std::string> output_options;  ///< of the MP4 file
    std::vector<TextStream> subtitles;        ///< written as scripts of their own
    double duration = 0;                      ///< of the movie in seconds; 0: unknown
    double rate = 0;                          ///< of the MP4 file, in frames per second; 0: unknown
    bool has_audio = false;
    bool fills_gaps = false;         ///< ffmpeg repeats frames in gaps, and reports how many
    std::vector<std::string> notes;  ///< what the MP4 file will lack, for the console
};

/// Decides how the movie becomes the requested MP4 file: its video stream, audio stream, text
/// subtitles, chapters and title and nothing else, H.264 Constrained Baseline in 8-bit 4:2:0 at the
/// lowest level that fits, with even sides. Starts no process and reads no file.
ConversionPlan plan_conversion(const TranscodeRequest& request, const Movie& movie,
                               const SystemFilters& system);

/// The command line of the system's ffmpeg for the plan: writes the file `output`, and the first
/// subtitles as scripts to these descriptors.
std::vector<std::string> arguments_of(const ConversionPlan& plan, const std::string& output,
                                      const std::vector<int>& scripts = {});

}  // namespace bundle
