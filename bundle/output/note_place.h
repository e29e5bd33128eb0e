#pragma once

#include <string>
#include <vector>

namespace bundle {

/// What a trace is about.
struct Subject {
    std::string output;  ///< the MP4 file
    std::string source;  ///< the movie, or the subtitles beside it
};

/// Where the trace of an output lies: its name with ".failed.txt". Of a name that leaves no room
/// for that there is the beginning and a mark of its own.
std::string trace_path(const std::string& output);

/// Where a trace goes, the best place first: beside the output, else beside the source, else into
/// the home folder. Away from the output its name has a mark, so that those of two outputs of one
/// name differ.
std::vector<std::string> trace_places(const Subject& subject);

}  // namespace bundle
