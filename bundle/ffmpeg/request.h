#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/numbers.h"
#include "core/result.h"

namespace bundle {

/// An option for today's ffmpeg: its name with the dash, and its value.
using Option = std::pair<std::string, std::string>;

/// What an old transcode command line asks for.
struct TranscodeRequest {
    std::string input;
    std::string output;
    bool overwrite = false;
    int width = 0;                     ///< of the picture asked for; 0 or 1 for a very flat movie
    int height = 0;                    ///< as above
    std::optional<Rational> rate;      ///< frames per second; empty: the movie's own
    int level = 0;                     ///< H.264 level times ten; 0: the lowest that will do
    std::vector<Option> video = {};    ///< in the order of the command line
    std::vector<Option> audio = {};    ///< as above
    std::vector<Option> general = {};  ///< as above
};

/// Reads the arguments that follow the program's name: "-y", "-i" and the input, options of one
/// value each, "-s WxH", and the output, which is the last one whatever it looks like; just so the
/// input is what follows "-i". Every other option is translated by a table into its meaning today.
/// Fails, with the status for wrong usage, for anything that the table does not know.
Result<TranscodeRequest> parse_transcode(const std::vector<std::string>& arguments);

/// The output of a line in the form "[-y] -i FILE ... -s SIZE OUT", whatever else is wrong with it;
/// empty for any other line.
std::optional<std::string> output_of(const std::vector<std::string>& arguments);

}  // namespace bundle
