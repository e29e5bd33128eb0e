#pragma once

#include <string>

#include "film.h"
#include "lifetime.h"
#include "result.h"

namespace bundle {

/// The film in a file, after a look at its streams' first packets: a stream of one picture is not
/// the film, sound of which nothing can be decoded is not its sound, and a length that the header
/// does not tell is taken from the packets. Failures name the file.
Result<Film> probe_film(const std::string& path, const StopSignals& stop);

}  // namespace bundle
