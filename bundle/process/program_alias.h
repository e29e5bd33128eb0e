#pragma once

#include <string>

namespace bundle {

/// The path by which to start a program so that the system lists it as `name`: a symbolic link in
/// the session's folder, else in one of its own among the temporary files. It stays there, because
/// the interpreter of a script opens it late. The program's own path where no link can be made.
std::string path_of_alias(const std::string& program, const std::string& name);

}  // namespace bundle
