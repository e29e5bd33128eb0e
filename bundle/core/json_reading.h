#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace bundle {

/// The member of an object; null where there is none or `object` is none itself.
const nlohmann::json& member(const nlohmann::json& object, const char* key);

/// A member that is text, empty otherwise; ffprobe's "unknown" is empty too.
std::string text(const nlohmann::json& object, const char* key);

/// A member that is a whole number from 0 to a million, 0 otherwise. ffprobe writes some whole
/// numbers as numbers and others as text.
int whole(const nlohmann::json& object, const char* key);

}  // namespace bundle
