#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// A subtitle and when it is shown.
struct Cue {
    std::int64_t start_ms = 0;
    std::int64_t end_ms = 0;
    std::string text;  ///< lines parted by LF, none of them empty; markup as in the file

    bool operator==(const Cue&) const = default;
};

/// The cues of a text in SubRip form, in the file's order, those without any text left out. Lines
/// may end in CR, LF, CR LF or CR CR LF; numbers may be missing, empty lines may stand within a cue
/// or behind every line. Blanks, byte order marks and SUB around a line are no part of it.
std::vector<Cue> read_subrip(std::string_view text);

}  // namespace bundle
