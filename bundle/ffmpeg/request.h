#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/numbers.h"
#include "core/result.h"

namespace bundle {

/// An option of the system's ffmpeg: its name with the dash, and its value.
using Option = std::pair<std::string, std::string>;

/// What an old transcode command line asks for.
struct TranscodeRequest {
    std::string input;
    std::string output;
    bool overwrite = false;
    int width = 0;                     ///< of the picture, in pixels; 0 or 1 for a very flat movie
    int height = 0;                    ///< as above
    std::optional<Rational> rate;      ///< frames per second; empty: the movie's own
    int level = 0;                     ///< lowest H.264 level, times ten; 0: any
    int reference_frames = 2;          ///< of H.264
    std::vector<Option> video = {};    ///< in the order of the command line
    std::vector<Option> audio = {};    ///< as above
    std::vector<Option> general = {};  ///< as above
};

/// Reads the arguments that follow the program's name: "-y", "-i" and the input, options of one
/// value each, "-s WxH" and the output. The word after "-i" is the input and the last word the
/// output, even if they look like options. Every other option is translated by a table into its
/// current form; one that is not in the table is refused. Failures have the status for wrong usage.
Result<TranscodeRequest> parse_transcode(const std::vector<std::string>& arguments);

/// The output of a command line of the form "[-y] -i FILE ... -s SIZE OUT", even if it is wrong
/// otherwise; empty for any other line.
std::optional<std::string> output_of(const std::vector<std::string>& arguments);

}  // namespace bundle
