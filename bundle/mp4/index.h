#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace bundle {

/// What the index of an MP4 file tells about one track.
struct Mp4Track {
    std::string handler;        ///< the kind in four letters: "vide", "soun", "sbtl", ...
    std::uint64_t samples = 0;  ///< frames, pieces of sound or texts
    double duration = 0;        ///< seconds in the MP4 file; 0 when it is not told
};

/// What the index of an MP4 file tells.
struct Mp4Index {
    double duration = 0;  ///< seconds, of the longest track; 0 when it is not told
    std::vector<Mp4Track> tracks;
};

/// Reads the index of an MP4 file (ISO/IEC 14496-12, all of it in one "moov" box) and sees that the
/// MP4 file is whole: the file ends where its boxes do, and every sample of every track lies in it.
/// Empty when one of that is not so.
std::optional<Mp4Index> read_mp4_index(std::istream& file);

}  // namespace bundle
