#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/result.h"

namespace bundle {

/// A tool's main function: calls `body` with the arguments after the program's name, prints a
/// failure to the error stream as the tool `name`, and returns the exit status.
int tool_main(const char* name, int count, char** arguments,
              const std::function<MaybeFailure(const std::vector<std::string>&)>& body) noexcept;

}  // namespace bundle
