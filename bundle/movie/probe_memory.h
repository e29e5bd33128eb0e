#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace bundle {

/// Keeps what ffprobe told about a file from the report on it to its conversion, which would have
/// to ask the same again. It is kept in $XDG_RUNTIME_DIR, a folder of the user's own that ends with
/// the session; without one nothing is kept. Nothing here fails: what can't be kept is asked anew.
///
/// A file is known by its device, number, size and times, so one that has changed is not known. One
/// that changed in the last seconds is not kept: its times might not tell the next change.
void remember_probe(const std::string& path, const nlohmann::json& probed);

/// What is kept about the file, once: it is forgotten by that.
std::optional<nlohmann::json> recall_probe(const std::string& path);

}  // namespace bundle
