#pragma once

#include <string>

#include "film.h"
#include "lifetime.h"
#include "result.h"

namespace bundle {

/// How much of a film's sound is looked at.
enum class Sound {
    kAsTold,  ///< what the streams tell of themselves
    kHeard,   ///< sound of which nothing can be decoded is not the film's sound: decodes some
};

/// The film in a file, after a look at its streams' first packets: a stream of one picture is not
/// the film, and a length that the header does not tell is taken from the packets. Failures name
/// the file.
Result<Film> probe_film(const std::string& path, Sound sound, const StopSignals& stop);

}  // namespace bundle
