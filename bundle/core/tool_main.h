#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/result.h"

namespace bundle {

/// What a tool's main function does: calls `body` with the arguments that follow the program's
/// name, tells a failure on the error stream as the tool `name`, and returns the exit status.
int tool_main(const char* name, int count, char** arguments,
              const std::function<MaybeFailure(const std::vector<std::string>&)>& body) noexcept;

}  // namespace bundle
