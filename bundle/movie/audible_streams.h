#pragma once

#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "core/stop_signals.h"
#include "movie/movie.h"

namespace bundle {

/// Finds out which sounds of a movie are damaged or enciphered, so that nothing of them can be
/// decoded though there is a decoder. That takes a start of ffprobe, and another one where the
/// first finds such a sound, so it waits for a reason.
class Listening {
  public:
    /// The movie in the file `path`, of which ffprobe told `probed`.
    Listening(std::string path, const nlohmann::json& probed, const StopSignals& stop);

    /// Decodes the beginnings of all sounds; only the first call does. Blocks.
    void listen();

    /// Takes the movie's sound for silent, of which a whole encoding has given nothing.
    void take_for_silent(const Movie& movie);

    /// The numbers of the streams that were found to be silent.
    const std::set<int>& silent() const { return silent_; }

    /// True when the sound that is taken for the movie's was found to be silent.
    bool found_silent(const Movie& movie) const;

  private:
    std::string path_;
    InputOptions options_;
    int sounds_;  ///< still to be listened to
    const StopSignals& stop_;
    std::set<int> silent_;
};

}  // namespace bundle
