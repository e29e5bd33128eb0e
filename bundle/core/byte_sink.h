#pragma once

#include <functional>
#include <string_view>

namespace bundle {

/// Takes bytes one piece after the other; false when it takes no more.
using ByteSink = std::function<bool(std::string_view)>;

}  // namespace bundle
