#include "program_alias.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "files.h"

namespace bundle {

Result<ProgramAlias> ProgramAlias::create(const std::string& program, const std::string& name) {
    if (name.empty()) {
        return ProgramAlias({}, program);
    }
    std::string folder = temporary_folder() + "/vantreo-XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr) {
        return Failure{"cannot make a folder in " + folder + ": " + std::strerror(errno)};
    }
    ProgramAlias alias(folder, folder + "/" + name);
    if (::symlink(program.c_str(), alias.path_.c_str()) != 0) {
        return Failure{"cannot make " + alias.path_ + ": " + std::strerror(errno)};
    }
    return alias;
}

ProgramAlias::ProgramAlias(std::string folder, std::string path)
    : folder_(std::move(folder)), path_(std::move(path)) {}

ProgramAlias::ProgramAlias(ProgramAlias&& other) noexcept
    : folder_(std::exchange(other.folder_, {})), path_(std::move(other.path_)) {}

ProgramAlias::~ProgramAlias() {
    if (!folder_.empty()) {
        ::unlink(path_.c_str());
        ::rmdir(folder_.c_str());
    }
}

}  // namespace bundle
