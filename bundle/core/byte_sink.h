#pragma once

#include <functional>
#include <string_view>

namespace bundle {

/// Takes bytes piece by piece; returns false when it takes no more.
using ByteSink = std::function<bool(std::string_view)>;

}  // namespace bundle
