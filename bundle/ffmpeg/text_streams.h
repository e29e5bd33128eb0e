#pragma once

#include <string>
#include <vector>

#include "movie/subtitle_choice.h"

namespace bundle {

/// The input options with which ffmpeg decodes these streams.
std::vector<std::string> text_options(const std::vector<TextStream>& streams);

/// A second input: the movie once more, `offset` seconds later and with its simplest edits only.
/// The others ffmpeg applies to text at the wrong times.
std::vector<std::string> text_input(const std::vector<TextStream>& streams, const std::string& path,
                                    double offset);

/// An output: the stream of this input as an ASS script, written to the descriptor.
std::vector<std::string> script_output(const TextStream& stream, int input, int descriptor);

}  // namespace bundle
