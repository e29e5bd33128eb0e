#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bundle {

/// A subtitle and the time when it is shown.
struct Cue {
    std::int64_t start_ms = 0;
    std::int64_t end_ms = 0;
    std::string text;  ///< lines separated by LF, none of them empty; with the file's markup

    bool operator==(const Cue&) const = default;
};

/// The cues of a SubRip text, in the file's order, without empty ones. Lines may end in CR, LF, CR
/// LF or CR CR LF. Numbers may be missing; empty lines may occur within a cue or after every line.
/// Blanks, byte order marks and SUB around a line are ignored.
std::vector<Cue> read_subrip(std::string_view text);

}  // namespace bundle
