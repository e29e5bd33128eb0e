#include "core/json_reading.h"

#include <nlohmann/json.hpp>

#include "core/numbers.h"

namespace bundle {

using nlohmann::json;

const json& member(const json& object, const char* key) {
    static const json none;
    if (!object.is_object()) {
        return none;
    }
    const auto found = object.find(key);
    return found == object.end() ? none : *found;
}

std::string text(const json& object, const char* key) {
    const json& value = member(object, key);
    const auto words = value.is_string() ? value.get<std::string>() : std::string();
    return words == "unknown" ? "" : words;
}

int whole(const json& object, const char* key) {
    const json& value = member(object, key);
    const auto number = value.is_number_integer() ? std::optional(value.get<std::int64_t>())
                                                  : parse_integer(text(object, key));
    return number && *number >= 0 && *number <= 1'000'000 ? static_cast<int>(*number) : 0;
}

}  // namespace bundle
