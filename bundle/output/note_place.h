#pragma once

#include <string>
#include <vector>

namespace bundle {

/// What a failure note is about.
struct Subject {
    std::string output;  ///< the MP4 file
    std::string source;  ///< the movie, or the subtitles beside it
};

/// The path of an output's failure note: the output's name with ".failed.txt". A name that is too
/// long for that is cut, and a hash of it keeps it unique.
std::string note_path(const std::string& output);

/// Where a failure note may be written, the best place first: beside the output, beside the source,
/// in the home folder. Away from the output, a hash of its path keeps the note's name unique.
std::vector<std::string> note_places(const Subject& subject);

}  // namespace bundle
