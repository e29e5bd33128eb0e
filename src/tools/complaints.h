#pragma once

#include <string>
#include <string_view>

/// Picks a tool's complaints, its lines "ffmpeg: ..." and "MP4Box: ...", out of what it prints on
/// its error stream. The bytes may come in any pieces.
class Complaints {
  public:
    /// The complaints whose line ends in these bytes, line ends included.
    std::string in(std::string_view bytes);

  private:
    std::string line;  ///< what came since the last line end, at most its first 8192 bytes
};
