#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace bundle {

/// One track of an MP4 file, by its index.
struct Mp4Track {
    std::string handler;        ///< the kind in four letters: "vide", "soun", "sbtl", ...
    std::uint64_t samples = 0;  ///< frames of picture or sound, or texts
    double duration = 0;        ///< seconds; 0: unknown
};

/// An MP4 file, by its index.
struct Mp4Index {
    double duration = 0;  ///< seconds, of the longest track; 0: unknown
    std::vector<Mp4Track> tracks;
};

/// Reads the index of an MP4 file (ISO/IEC 14496-12, all of it in one "moov" box) as ffmpeg writes
/// it. Empty when the file is incomplete: it does not end where its boxes do, or a sample of a
/// track is not in it.
std::optional<Mp4Index> read_mp4_index(std::istream& file);

}  // namespace bundle
