#include "process/program_alias.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "core/formatted.h"
#include "protocol/session_folder.h"

namespace bundle {

std::string path_of_alias(const std::string& program, const std::string& name) {
    const auto session = session_folder();
    if (!session) {
        return program;
    }
    const std::string folder = *session + formatted("/%zx", std::hash<std::string>()(program));
    const std::string path = folder + "/" + name;
    ::mkdir(folder.c_str(), S_IRWXU);
    [[maybe_unused]] const int made = ::symlink(program.c_str(), path.c_str());
    std::error_code error;
    return std::filesystem::read_symlink(path, error) == program ? path : program;
}

}  // namespace bundle
