#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace bundle {

/// The member of an object; null when there is none or `object` is not an object.
const nlohmann::json& member(const nlohmann::json& object, const char* key);

/// A text member; empty for anything else and for ffprobe's "unknown".
std::string text(const nlohmann::json& object, const char* key);

/// A whole number from 0 to a million, 0 for anything else. ffprobe writes some whole numbers as
/// numbers and others as text.
int whole(const nlohmann::json& object, const char* key);

}  // namespace bundle
